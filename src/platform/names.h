// SPDX-License-Identifier: Apache-2.0
#pragma once

// Names of modules and resources, which do not distinguish the case of ASCII letters.

#include <algorithm>
#include <string_view>

namespace fixtop {

inline char LowerLetter(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

inline bool SameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return LowerLetter(x) == LowerLetter(y); });
}

}  // namespace fixtop
