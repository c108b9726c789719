// SPDX-License-Identifier: Apache-2.0
#pragma once

// How nodes are shown.

#include <functional>
#include <string>

#include "fixtop/client/node.h"
#include "json.h"
#include "line_text.h"

namespace fixtop {

using client::Node;

std::string OneLine(const FIValue& value);
// The name, and the key in parentheses behind it; the second on one line.
std::string NameWithKey(const Node& node);
std::string ShownName(const Node& node);
// On one line.
std::string TextOf(const Node& node, const char* attribute);
// The path, on one line, from which arguments are read.
std::string ShownPath(const Node& node);

// ^C was typed while nodes were walked, where it does not end the program.
struct Interrupted {};

// Visits the children in order. Stops when `visit` answers false; throws Interrupted.
using ChildVisitor = std::function<bool(const client::Child& child)>;
void ForEachChild(const Node& node, const ChildVisitor& visit);

// The same, but of an array only the first kFoldedAt elements. Answers how many were left out.
inline constexpr int kFoldedAt = 12;
int ForEachFirstChild(const Node& node, const ChildVisitor& visit);
// The line that stands for the elements that were left out.
std::string FoldedLine(int left_out);

// A number in JSON has the shortest digits that lead back to it, as in a case file.
Json ToJson(const FIValue& value);
Json UnitToJson(const std::string& unit);
// Says so in a record of the node when its value is stale.
void MarkStale(const Node& node, Json& record);
// On one line, or with `indent` on several. Control characters stand as JSON escapes them; bytes
// that are no UTF-8 are replaced.
std::string ToLine(const Json& json, int indent = -1);

}  // namespace fixtop
