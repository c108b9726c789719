// SPDX-License-Identifier: Apache-2.0
#include "mapping/translators/branch_request.h"

namespace fixtop {

bool BranchAccepts(CCDMBranch branch, BranchRequest request) {
    switch (branch) {
        case CCDMBranch::kBoth:
            return request != BranchRequest::kCalcOnly && request != BranchRequest::kSpecOnly;
        case CCDMBranch::kCalc:
            return request == BranchRequest::kCalc || request == BranchRequest::kAny ||
                   request == BranchRequest::kCalcOnly;
        case CCDMBranch::kSpec:
            return request == BranchRequest::kSpec || request == BranchRequest::kAny ||
                   request == BranchRequest::kSpecOnly;
        case CCDMBranch::kUnspecified:
            break;
    }
    return false;
}

}  // namespace fixtop
