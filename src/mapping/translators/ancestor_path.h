// SPDX-License-Identifier: Apache-2.0
#pragma once

// Where an entry of the neutral tree stands: its class and its attribute, and those of the entries
// above it. Translators are chosen by it.
//
// A level is embedded in its entry and points upward to the parent's, which must outlive it, as the
// names do: they are of the attribute's record or of the entry.

#include <string_view>

namespace fixtop {

class CCDMClass;

struct AncestorPath {
    std::string_view className;  // the attribute's class, or the subclass of this very element
    std::string_view id;         // the attribute's name
    const AncestorPath* parent = nullptr;
    // The record of className; null when the library has no such class.
    const CCDMClass* classRecord = nullptr;
    int depth = 1;   // 1 at the top
    int index = -1;  // of the element when the attribute is an array

    // Level 0 is this one, level k is reached by k steps to the parent; null beyond the top.
    const AncestorPath* Level(int k) const {
        const AncestorPath* level = this;
        while (k-- > 0 && level != nullptr) level = level->parent;
        return level;
    }
};

}  // namespace fixtop
