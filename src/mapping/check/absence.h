// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace fixtop {

// What an attribute of a class lacks at a place of the neutral tree. The numbers are part of the
// interface.
enum class Absence : int {
    kHasValue = 0,
    kUnmapped = 1,      // the map has no translator for it at all
    kNoTranslator = 2,  // none of its translators applies at this place
    kNoNode = 3,        // the one that does leads to no node
    kNoValue = 4,       // the node has no value, or the list no element
    kRefused = 5,       // the value has a unit, or an option, that the class library does not know
};

}  // namespace fixtop
