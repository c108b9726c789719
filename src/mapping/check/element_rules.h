// SPDX-License-Identifier: Apache-2.0
#pragma once

// Which elements and attributes the readers of class and map files take, and where.

#include <span>

#include "mapping/check/checked_element.h"

namespace fixtop {

struct ElementRule {
    const char* name;
    std::span<const char* const> wanted = {};    // attributes that it must have
    std::span<const char* const> possible = {};  // and those that it may have
    std::span<const ElementRule> children = {};
    bool reads_text = false;
    // A note for people, which no reader takes, whatever is in it.
    bool is_note = false;
};

// The roots. What a root has of attributes nobody reads.
extern const ElementRule kClassFileRule;
extern const ElementRule kMapFileRule;

// Tells what nobody reads in an element directly below the root, and what is missing in it. Answers
// its rule; null when nobody reads it at all.
const ElementRule* CheckElement(const ElementRule& root, const CheckedElement& element,
                                Findings& findings);

}  // namespace fixtop
