// SPDX-License-Identifier: Apache-2.0
#pragma once

// A column of any number of stages for the benchmarks.

#include "casehost/case_data.h"

namespace fixtop::bench {

inline constexpr char kColumn[] = "T-100";
inline constexpr char kProfiles[] = "Profiles";

// A column and, beside it, the unit operation that holds the profiles over its stages, condenser
// and reboiler among them: names, temperature, pressure, liquid and vapour flow.
casehost::CaseData MakeColumn(int stages);

}  // namespace fixtop::bench
