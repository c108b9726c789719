// SPDX-License-Identifier: Apache-2.0
#pragma once

// A unit adapter inside the test program: two quantities with a few units, and a record of the
// calls that matter. Offered under any name that a test wants.

#include <cstring>
#include <string>
#include <vector>

#include "model/unit_source.h"
#include "platform/modules.h"

namespace fixtop {

class FakeUnitSource final : public CCDMUnitSource {
 public:
    bool Init(const char* init_string) override {
        Calls().push_back(std::string("Init ") + init_string);
        return std::strcmp(init_string, "refuse") != 0;
    }
    void Destroy() override { Calls().push_back("Destroy"); }
    int QuantityId(const char* name) override {
        if (std::strcmp(name, "Pressure") == 0) return 1;
        if (std::strcmp(name, "Temperature") == 0) return 2;
        return -1;
    }
    // 10 kPa, 11 bar (Pressure); 20 C, 21 K (Temperature).
    int UnitId(const char* name, int quantity) override {
        struct Row {
            const char* name;
            int quantity;
            int number;
        };
        for (const Row& row : {Row{"kPa", 1, 10}, Row{"bar", 1, 11}, Row{"at", 1, 12},
                               Row{"C", 2, 20}, Row{"K", 2, 21}}) {
            if (std::strcmp(row.name, name) != 0) continue;
            if (quantity == 0 || quantity == row.quantity) return row.number;
        }
        return -1;
    }
    int QuantityOfUnit(int unit) override { return unit / 10; }
    const char* QuantityName(int) override { return ""; }
    const char* UnitName(int) override { return ""; }
    double Convert(double value, int from_unit, int to_unit) override {
        return value * 10000 + from_unit * 100 + to_unit;
    }

    static std::vector<std::string>& Calls() {
        static std::vector<std::string> calls;
        return calls;
    }
    static CCDMUnitSource* Create() {
        Calls().push_back("Create");
        return new FakeUnitSource;
    }
    static void Delete(CCDMUnitSource* source) {
        Calls().push_back("Delete");
        delete static_cast<FakeUnitSource*>(source);
    }
};

// Offers the fake for the time of a test.
class OfferedFake {
 public:
    explicit OfferedFake(const char* name = "FakeUnits") : name_(name) {
        FakeUnitSource::Calls().clear();
        OfferModule(name, {{"CreateUnitSource", reinterpret_cast<void*>(FakeUnitSource::Create)},
                           {"DeleteUnitSource", reinterpret_cast<void*>(FakeUnitSource::Delete)}});
    }
    ~OfferedFake() { WithdrawModule(name_.c_str()); }
    OfferedFake(const OfferedFake&) = delete;
    OfferedFake& operator=(const OfferedFake&) = delete;

 private:
    std::string name_;
};

}  // namespace fixtop
