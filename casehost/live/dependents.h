// SPDX-License-Identifier: Apache-2.0
#pragma once

// DependencyMap: which nodes of a case depend on which, as far as streams and attachments tell.

#include <unordered_map>
#include <vector>

#include "live/node_list.h"

namespace fixtop::casehost {

class DependencyMap {
 public:
    // Enters the ports and attachments of a node.
    void AddNode(Node& node);
    // Whoever depends on `from` depends on `to` too.
    void AddEdge(Node& from, Node& to) { dependents_[&from].push_back(&to); }
    // `start`, the maker of `start` when it is a stream, and all that depend on these.
    std::vector<Node*> Closure(Node& start) const;

 private:
    void AddPorts(Node& unit);
    void AddAttachments(Node& node);

    std::unordered_map<const Node*, std::vector<Node*>> dependents_;
    std::unordered_map<const Node*, Node*> makers_;
};

}  // namespace fixtop::casehost
