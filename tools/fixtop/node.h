#pragma once

// What the commands do with a position in the tree.

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "fixtop/iterator.h"
#include "fixtop/ref.h"
#include "fixtop/value.h"
#include "json.h"
#include "line_text.h"
#include "memory.h"
#include "path_text.h"

namespace fixtop {

using NodeRef = Ref<FIIteratorBase>;

// Throws when there is no memory for it.
inline NodeRef CopyOf(FIIteratorBase& node) {
    return NodeRef::Adopt(Given(node.Copy()));
}

std::string NameOf(FIIteratorBase& node);
// What tells the node from its siblings of the same name; empty when nothing does.
std::string KeyOf(FIIteratorBase& node);
// The name, and the key in parentheses behind it.
std::string NameWithKey(FIIteratorBase& node);
// The same on one line.
std::string ShownName(FIIteratorBase& node);
FIValue AttributeOf(FIIteratorBase& node, const char* name);
std::string OneLine(const FIValue& value);
// On one line.
std::string TextOf(FIIteratorBase& node, const char* attribute);
// The value is older than a change of the case.
bool IsStale(FIIteratorBase& node);

// What is wrong with a path expression; empty when it parses.
std::string ParseError(const std::string& expression);

// Has an attribute of the node shown in this unit, or as it is when that is empty. Answers the
// module's message when it can't, else an empty text.
std::string SetUnit(FIIteratorBase& node, const std::string& attribute, const std::string& unit);
// The unit in which an attribute is told; empty when it has none.
std::string UnitOf(FIIteratorBase& node, const std::string& attribute);
// What is to be said when a number that was wanted in a unit is told in another, `unit`; empty when
// it is not, and when nothing was wanted.
std::string OtherUnit(const std::string& attribute, const FIValue& value, const std::string& unit,
                      const std::string& wanted);

// The node shows a value of its own: it is no list and no object.
bool IsVariable(FIIteratorBase& node);
// The node is an array or a level of one.
bool IsArray(FIIteratorBase& node);

// ^C was typed while nodes were walked, where it does not end the program.
struct Interrupted {};

// Calls `visit` with an iterator that stands on each child in turn and with the child's place. The
// iterator is only lent. Stops when `visit` answers false; throws Interrupted.
using ChildVisitor = std::function<bool(FIIteratorBase& child, const ChildPlace& place)>;
void ForEachChild(FIIteratorBase& node, const ChildVisitor& visit);

// The same, but of an array only the first kFoldedAt elements. Answers how many were left out.
inline constexpr int kFoldedAt = 12;
int ForEachFirstChild(FIIteratorBase& node, const ChildVisitor& visit);
// The line that stands for the elements that were left out.
std::string FoldedLine(int left_out);

std::vector<std::string> ChildNames(FIIteratorBase& node);
std::vector<std::pair<std::string, FIValue>> AttributesOf(FIIteratorBase& node);

// The path from the top node, in steps that lead back to exactly this node.
std::string FullPath(FIIteratorBase& node);
// The same on one line, from which arguments are read.
std::string ShownPath(FIIteratorBase& node);

// A number in JSON has the digits that the value has as text.
Json ToJson(const FIValue& value);
// Says so in a record of the node when its value is stale.
void MarkStale(FIIteratorBase& node, Json& record);
// On one line, or with `indent` on several. Control characters stand as JSON escapes them; bytes
// that are no UTF-8 are replaced.
std::string ToLine(const Json& json, int indent = -1);

}  // namespace fixtop
