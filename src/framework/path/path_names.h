// SPDX-License-Identifier: Apache-2.0
#pragma once

// What a path makes of the names of nodes.

#include <string>

#include "fixtop/value.h"

namespace fixtop {

// Names are compared on this many characters.
inline constexpr int kComparedNameLength = 199;

// The name that any child has; an empty one is as good.
inline constexpr char kAnyName[] = "*";
bool IsAnyName(const char* name);
inline bool IsAnyName(const FIValue& name) {
    return IsAnyName(name.CStr());
}

// A text as it is written in a path, in quotes where it needs them: as a name, and in parentheses.
std::string WrittenName(const std::string& name);
std::string WrittenKey(const std::string& key);
// A written text without its quotes.
std::string PlainText(const FIValue& written);

// `step` behind `path`; either may be empty.
std::string JoinPath(const std::string& path, const std::string& step);

}  // namespace fixtop
