// SPDX-License-Identifier: Apache-2.0
#pragma once

// The variables that a translator asks for or sets.

#include <string>
#include <utility>
#include <vector>

#include "fixtop/value.h"

namespace fixtop {

// Pairs of variable and value. Those of one attribute element are shared by all its translators.
using VariableList = std::vector<std::pair<std::string, FIValue>>;
struct CCDMConditionList {
    VariableList pairs;
};
struct CCDMSetVarList {
    VariableList pairs;
};

}  // namespace fixtop
