// SPDX-License-Identifier: Apache-2.0
#pragma once

// All nodes that a path leads to, where a walk goes to the first; and how far a path leads that
// leads nowhere.

#include <functional>
#include <string>

#include "framework/iterator/iterator.h"
#include "path/prepared_path.h"

namespace fixtop {

struct PathMatch {
    FIIterator& node;   // lent
    std::string path;   // from the root to the node and to no other
    FIValue attribute;  // in which the path ends; NULL without one
};

// Visits every match of every step from `start`, in the order of the tree, until `visit` answers
// false. A count takes the match of this number among the siblings; parentheses with more behind
// them hold a key; a path that ends in an attribute matches nodes where that is not NULL. A step
// whose name no child shows goes where a walk does, since some lists know their elements by other
// names too. Answers how many were visited. The path has to parse.
using MatchVisitor = std::function<bool(const PathMatch& match)>;
int ForEachMatch(FIIterator& start, const PreparedPath& path, const MatchVisitor& visit);
// The same with paths from `start`, which saves the way back from there to the root.
int ForEachMatchBelow(FIIterator& start, const PreparedPath& path, const MatchVisitor& visit);

// Where a path ends that leads nowhere.
struct PathEnd {
    Ref<FIIterator> node;  // from which it goes no further
    std::string found;     // the part of the path that leads somewhere
    std::string name;      // of the next step
    std::string step;      // that step as it is written, without its parentheses
    // Set when that step leads to a node, but not with what stands in its parentheses.
    FIValue parentheses;
    bool goes_on = false;  // more is written behind those
};
PathEnd EndOf(FIIterator& start, const PreparedPath& path);

}  // namespace fixtop
