#pragma once

// Follows every match of every step of a path, where a walk takes the first.

#include <functional>
#include <string>

#include "case_session.h"

namespace fixtop {

struct Match {
    FIIteratorBase& node;   // lent
    std::string path;       // of the node, from the top
    std::string attribute;  // in which the pattern ends; empty without one
};
using MatchVisitor = std::function<void(const Match& match)>;

// Visits all nodes that the pattern leads to from where the session stands; from the top when there
// are none. A pattern that ends in an attribute matches nodes where that is not NULL. Answers what
// is wrong with the pattern, or that nothing matches it; empty when something did.
std::string ForEachMatch(CaseSession& session, const std::string& pattern,
                         const MatchVisitor& visit);

}  // namespace fixtop
