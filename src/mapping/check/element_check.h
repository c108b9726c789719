// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "mapping/check/checked_element.h"
#include "mapping/check/element_rules.h"
#include "mapping/check/findings.h"

namespace fixtop {

// Tells what nobody reads in an element directly below the parent, and what is missing in it.
// Answers its rule; null when nobody reads it at all.
const ElementRule* CheckElement(const ElementRule& parent, const CheckedElement& element,
                                Findings& findings);

}  // namespace fixtop
