// SPDX-License-Identifier: Apache-2.0
#pragma once

// The module's texts that are read as more than texts.

#include <optional>
#include <string>

#include "fixtop/value.h"

namespace fixtop::client {

class Node;

// A node's object is not there.
bool IsGoneText(const std::string& text);
// Throws Gone or Refused, unless the text is empty.
void ThrowIfRefused(const Node& node, const std::string& text);

// A text as it is typed for a node. A unit may stand behind a number: "30 C", "30C".
struct Typed {
    FIValue value;
    std::string unit;  // empty without one
};
// Throws Refused when it is no number where one is needed, or when it has a unit beside `unit`.
Typed TypedIn(const Node& node, const std::string& text, const std::string& unit);

// A text as it is typed, for a node of this type: NULL when it is empty, a number where the node is
// one. Null when it is no number where one is needed.
std::optional<FIValue> TypedValue(const std::string& type, const std::string& text);
std::string NoNumber(const std::string& text);

}  // namespace fixtop::client
