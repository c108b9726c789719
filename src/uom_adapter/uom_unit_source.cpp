// SPDX-License-Identifier: Apache-2.0
// The unit adapter: definitions from XML behind the contract of a unit source.

#include <cerrno>
#include <new>

#include "model/unit_source.h"
#include "uom_adapter/uom_definitions.h"

namespace fixtop {

namespace {

class UomUnitSource final : public CCDMUnitSource {
 public:
    bool Init(const char* init_string) override {
        try {
            problem_ = definitions_.Read(init_string == nullptr ? "" : init_string);
            return problem_.empty();
        } catch (const std::bad_alloc&) {
            errno = ENOMEM;
            return false;
        }
    }
    const char* Problem() const { return problem_.c_str(); }
    void Destroy() override {
        definitions_.Clear();
        problem_.clear();
    }
    int QuantityId(const char* name) override {
        return NumberOrNone(definitions_.FindQuantity(Text(name)));
    }
    int UnitId(const char* name, int quantity) override {
        return NumberOrNone(definitions_.FindUnit(Text(name), quantity));
    }
    int QuantityOfUnit(int unit) override {
        const Uom* found = definitions_.Unit(unit);
        return found == nullptr ? kNone : found->quantity;
    }
    const char* QuantityName(int quantity) override {
        const UomQuantity* found = definitions_.Quantity(quantity);
        return found == nullptr ? "" : found->name.c_str();
    }
    const char* UnitName(int unit) override {
        const Uom* found = definitions_.Unit(unit);
        return found == nullptr ? "" : found->name.c_str();
    }
    double Convert(double value, int from_unit, int to_unit) override {
        return definitions_.Convert(value, from_unit, to_unit);
    }

 private:
    static constexpr int kNone = -1;

    static int NumberOrNone(int number) { return number > 0 ? number : kNone; }
    static const char* Text(const char* text) { return text == nullptr ? "" : text; }

    UomDefinitions definitions_;
    std::string problem_;
};

}  // namespace

extern "C" CCDMUnitSource* CreateUnitSource() {
    try {
        return new UomUnitSource;
    } catch (const std::bad_alloc&) {
        errno = ENOMEM;
        return nullptr;
    }
}

extern "C" void DeleteUnitSource(CCDMUnitSource* source) {
    delete static_cast<UomUnitSource*>(source);
}

extern "C" const char* UnitSourceProblem(CCDMUnitSource* source) {
    return static_cast<UomUnitSource*>(source)->Problem();
}

}  // namespace fixtop
