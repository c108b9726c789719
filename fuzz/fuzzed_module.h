// SPDX-License-Identifier: Apache-2.0
#pragma once

// The module as a target has it: linked with its exports, and with the unit adapter, which is then
// offered under its name instead of being loaded.

#include "model/units_list.h"
#include "platform/modules.h"

namespace fixtop {

extern "C" {
CCDMUnitSource* CreateUnitSource();
void DeleteUnitSource(CCDMUnitSource* source);
const char* UnitSourceProblem(CCDMUnitSource* source);
}

inline void OfferOwnAdapter() {
    OfferModule(kUnitAdapterName,
                {{"CreateUnitSource", reinterpret_cast<void*>(CreateUnitSource)},
                 {"DeleteUnitSource", reinterpret_cast<void*>(DeleteUnitSource)},
                 {"UnitSourceProblem", reinterpret_cast<void*>(UnitSourceProblem)}});
}

}  // namespace fixtop
