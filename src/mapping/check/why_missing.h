// SPDX-License-Identifier: Apache-2.0
#pragma once

// Why an attribute of a class has no value at a place of the neutral tree, for those who write the
// map.

#include <string>

#include "mapping/check/absence.h"
#include "mapping/nodes/class_context.h"

namespace fixtop {

// An object has a value when it is there, a list when it shows an element with one. `reason` is the
// same text wherever the reason is the same; empty where there is none to tell.
Absence WhyMissing(CCDMClassContext& place, const std::string& attribute, std::string& reason);

}  // namespace fixtop
