#pragma once

#include <vector>

#include "casehost/case_data.h"

namespace fixtop::casehost::demo {

// The compounds of the built-in case, with constants from R. C. Reid, J. M. Prausnitz, B. E.
// Poling, The Properties of Gases and Liquids, 4th ed., McGraw-Hill 1987, Appendix A.
std::vector<CompoundData> Compounds();

}  // namespace fixtop::casehost::demo
