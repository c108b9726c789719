// SPDX-License-Identifier: Apache-2.0
#pragma once

// Writes what a flowsheet's solve found back into the objects of its case.
//
// Only variables that an object has are written, found by their names; inputs keep their values.
// A calculated value that the solve could not find becomes empty with state `missing`. An object
// without a steady-state model keeps its variables as they are.

#include "process/flowsheet.h"

namespace fixtop::casehost::process {

// Properties of a solved material stream by display name. An array over the compounds has their
// order; "Phase Fraction" and the arrays by phase have one value or row for each of ResultPhases().
Parameters StreamProperties(const Thermo& thermo, const MaterialState& state);
const std::vector<std::string>& ResultPhases();

// The streams, units and sub-flowsheet operations of the graph. `thermo` is null when the compounds
// allow no solve at all: then everything calculated becomes empty.
void WriteResults(const Flowsheet& sheet, const Thermo* thermo);

}  // namespace fixtop::casehost::process
