// SPDX-License-Identifier: Apache-2.0
// Unit file text over a small adapter, and questions to what it defines.

#include "fuzzed_reader.h"
#include "model/class_library.h"

namespace fixtop {

namespace {

// Knows every quantity and unit whose name begins with a letter.
class LetterSource final : public CCDMUnitSource {
 public:
    bool Init(const char* init_string) override { return *init_string != '0'; }
    void Destroy() override {}
    int QuantityId(const char* name) override { return Number(name); }
    int UnitId(const char* name, int quantity) override {
        return quantity > 'm' ? -1 : Number(name);
    }
    int QuantityOfUnit(int) override { return 1; }
    const char* QuantityName(int) override { return ""; }
    const char* UnitName(int) override { return ""; }
    double Convert(double value, int, int) override { return value; }

 private:
    static int Number(const char* name) { return *name >= 'A' && *name <= 'z' ? *name : -1; }
};

CCDMUnitSource* Create() {
    return new LetterSource;
}
void Delete(CCDMUnitSource* source) {
    delete static_cast<LetterSource*>(source);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    SetUpFuzzedReader();
    OfferModule("Letters", {{"CreateUnitSource", reinterpret_cast<void*>(Create)},
                            {"DeleteUnitSource", reinterpret_cast<void*>(Delete)}});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (!TakeInput(data, size)) return -1;
    CCDMClassLibrary library(&library);
    library.ReadUnitFile(kFuzzedName);
    FIValue out;
    for (const char* unit : {"a", "b", "kPa", ""}) {
        for (const char* quantity : {"P", "z", ""}) {
            library.units.ToCcdmUnit(FIValue(unit), FIValue(quantity), out);
            library.units.ToAppUnit(FIValue(unit), FIValue(quantity), out);
        }
    }
    return 0;
}

}  // namespace fixtop
