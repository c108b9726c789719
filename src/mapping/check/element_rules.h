// SPDX-License-Identifier: Apache-2.0
#pragma once

// Which elements and attributes the readers of class and map files take, and where.

#include <span>

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

}  // namespace fixtop
