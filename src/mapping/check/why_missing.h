// SPDX-License-Identifier: Apache-2.0
#pragma once

// Why an attribute of a class has no value at a place of the neutral tree, for those who write the
// map.

#include <string>

#include "mapping/nodes/class_context.h"

namespace fixtop {

// The numbers are part of the interface.
enum class Absence : int {
    kHasValue = 0,
    kUnmapped = 1,      // the map has no translator for it at all
    kNoTranslator = 2,  // none of its translators applies at this place
    kNoNode = 3,        // the one that does leads to no node
    kNoValue = 4,       // the node has no value, or the list no element
    kRefused = 5,       // the value has a unit, or an option, that the class library does not know
};

// An object has a value when it is there, a list when it shows an element with one. `reason` is the
// same text wherever the reason is the same; empty where there is none to tell.
Absence WhyMissing(CCDMClassContext& place, const std::string& attribute, std::string& reason);

}  // namespace fixtop
