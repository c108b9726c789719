// SPDX-License-Identifier: Apache-2.0
#pragma once

// The order in which the units of a flowsheet are solved. Units that depend on each other in a
// circle form one group; its tear streams are those that its order meets before their maker.

#include <vector>

#include "process/flowsheet.h"

namespace fixtop::casehost::process {

struct SolveGroup {
    std::vector<int> units;  // in the order of one pass
    std::vector<int> tears;  // streams to guess; empty for a single unit without recycle
};

// Groups come after all groups they depend on. Depth-first search throughout, without recursion:
// groups are the strongly connected components (S. R. Kosaraju's two searches; A. V. Aho,
// J. E. Hopcroft, J. D. Ullman, Data Structures and Algorithms, 1983, section 6.7), tears are the
// back edges of a search that starts at a unit fed from outside, a mixer by preference.
std::vector<SolveGroup> FindSolveOrder(const Flowsheet& sheet);

}  // namespace fixtop::casehost::process
