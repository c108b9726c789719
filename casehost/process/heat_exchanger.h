// SPDX-License-Identifier: Apache-2.0
#pragma once

// The two-sided heat exchanger: counter-current, without loss to the outside. Feed and product 0
// are the tube side, 1 the shell side. Exactly one of duty, UA and an outlet temperature is given;
// the pressure of each side as for every one-in one-out operation.
//
// Duty goes from the side with the hotter inlet to the other. UA belongs to the logarithmic mean of
// the two end differences (Perry's Chemical Engineers' Handbook, 8th ed., section 11), also where a
// side boils or condenses: there are no zones.

#include "process/unit_ops.h"

namespace fixtop::casehost::process {

UnitOutput SolveHeatExchanger(const Thermo& thermo, const UnitInput& input);

}  // namespace fixtop::casehost::process
