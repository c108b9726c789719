// SPDX-License-Identifier: Apache-2.0
#pragma once

// The way back to a node: for each child of a node the step that leads to it and to no other.

#include <functional>
#include <string>
#include <vector>

#include "framework/iterator/iterator.h"

namespace fixtop {

struct ChildStep {
    std::string name;  // by which the child is sought
    std::string step;
    int index = 0;  // count of earlier siblings
};

// Visits the children in order, each on an iterator that is only lent, until `visit` answers false.
using ChildVisitor = std::function<bool(FIIterator& child, const ChildStep& step)>;
void ForEachChild(FIIterator& node, const ChildVisitor& visit);
// Their names alone, as steps have them.
std::vector<std::string> NamesOfChildren(FIIterator& node);

// The path from the root, in such steps; empty for the root.
std::string PathTo(FIIterator& node);

// The plain text of what tells the node from its siblings; empty when nothing does.
std::string KeyOf(FIIterator& node);

}  // namespace fixtop
