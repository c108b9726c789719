#pragma once

#include <vector>

#include "casehost/case_data.h"

namespace fixtop::casehost::demo {

// What the built-in case tells of its basis beside the compounds: "FluidPackage", with the plant's
// choices of methods, and "ReactionPackage", with three reactions and two sets of them. The rate
// data are made up: they show the shape and take part in no solve.
std::vector<BasisElement> Basis();

}  // namespace fixtop::casehost::demo
