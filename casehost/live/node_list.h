// SPDX-License-Identifier: Apache-2.0
#pragma once

// NodeList: objects in their order, with the host's list over them and an index by name.

#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "live/holder_list.h"
#include "live/node.h"

namespace fixtop::casehost {

class NodeList {
 public:
    const HolderList& List() const { return list_; }
    const HolderList* ListOrNull() const { return nodes_.empty() ? nullptr : &list_; }
    std::size_t Size() const { return nodes_.size(); }
    Node& At(std::size_t index) const { return *nodes_[index]; }
    void Reserve(std::size_t count) {
        nodes_.reserve(count);
        list_.Reserve(count);
    }

    void Append(std::unique_ptr<Node> node) { Insert(nodes_.size(), std::move(node)); }
    void Insert(std::size_t index, std::unique_ptr<Node> node);
    // Takes a node out; null when it is not in the list.
    std::unique_ptr<Node> Remove(const Node& node);
    bool Move(const Node& node, std::size_t index);
    // A node of the list was renamed.
    void Renamed() { list_.Touch(); }

    // The first of that name, null when there is none.
    Node* Find(std::string_view name) const;
    std::size_t IndexOf(const Node& node) const;
    bool Holds(const Node& node) const { return IndexOf(node) < Size(); }
    // Reads "(Feed)" or "Feed" at the beginning of `rest` and moves `rest` behind it. There `rest`
    // must end or go on with '/' or ':'. Names may hold such characters: the longest match counts.
    Node* FollowName(std::string_view& rest) const;

 private:
    std::vector<std::unique_ptr<Node>> nodes_;
    HolderList list_;
    mutable std::unordered_map<std::string_view, Node*> by_name_;
    mutable std::uint64_t indexed_revision_ = 0;
};

}  // namespace fixtop::casehost
