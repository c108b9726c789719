// SPDX-License-Identifier: Apache-2.0
#pragma once

// Which face of a quantity a caller asks a translator for. The numbers are part of the interface.

#include "model/model_types.h"

namespace fixtop {

enum class BranchRequest : int {
    kUnspecified = 0,
    kBoth = 1,
    kCalc = 2,      // the calculated face
    kSpec = 3,      // the specified face
    kAny = 4,       // whatever there is
    kNone = 5,      // only what serves both faces
    kCalcOnly = 6,  // no translator that serves both faces
    kSpecOnly = 7,
};

// Whether a translator of this branch may serve the request.
bool BranchAccepts(CCDMBranch branch, BranchRequest request);

}  // namespace fixtop
