// SPDX-License-Identifier: Apache-2.0
#include "semantic/column_vessels.h"

#include "semantic/idioms.h"

namespace fixtop::semantic {

namespace {

constexpr int kVesselLimit = 1000;

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

}  // namespace fixtop::semantic
