// SPDX-License-Identifier: Apache-2.0
#include "semantic/column_vessels.h"

#include "fixtop/semantic_functions.h"
#include "semantic/idioms.h"

namespace fixtop {

namespace semantic {

namespace {

constexpr int kVesselLimit = 1000;

int NozzleList(FIIteratorBase& it, int index, const char* vessel) {
    if (index != kCountIndex) return SetElementName(it, "NozzleElemNum", index);
    const Ref<FIIteratorBase> walker = CopyOf(it);
    return FindVessel(*walker, vessel) ? CountChildren(*walker, {"Nozzle Diameter"}) : 0;
}

}  // namespace

bool FindVessel(FIIteratorBase& it, const char* name) {
    if (!SeekNames(it, {"Vessels"})) return false;
    const auto has_name = [name](FIIteratorBase& vessel) {
        return ReadChildValue(vessel, "Object Name").ToText() == name;
    };
    if (FindChild(it, has_name, kVesselLimit)) return true;
    it.Up();
    return false;
}

}  // namespace semantic

using semantic::Exported;
using semantic::NozzleList;

int CTCondNozzle(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return NozzleList(*it, index, semantic::kCondenser); });
}

int CTRebNozzle(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return NozzleList(*it, index, semantic::kReboiler); });
}

}  // namespace fixtop
