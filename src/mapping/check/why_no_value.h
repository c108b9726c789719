// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "mapping/check/absence.h"
#include "mapping/nodes/class_context.h"

namespace fixtop {

// Whether the node that an attribute leads to has a value: kHasValue, kNoValue or kRefused, with
// the reason. An object has a value when it is there, a list when it shows an element with one.
Absence WhyNoValue(CCDMClassContext& place, const CCDMAttribute& attribute, std::string& reason);

}  // namespace fixtop
