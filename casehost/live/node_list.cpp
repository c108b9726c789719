// SPDX-License-Identifier: Apache-2.0
#include "live/node_list.h"

#include <algorithm>

namespace fixtop::casehost {

void NodeList::Insert(std::size_t index, std::unique_ptr<Node> node) {
    index = std::min(index, nodes_.size());
    list_.Insert(index, node->View());
    nodes_.insert(nodes_.begin() + static_cast<std::ptrdiff_t>(index), std::move(node));
}

std::size_t NodeList::IndexOf(const Node& node) const {
    const auto found = std::find_if(nodes_.begin(), nodes_.end(),
                                    [&](const auto& each) { return each.get() == &node; });
    return static_cast<std::size_t>(found - nodes_.begin());
}

std::unique_ptr<Node> NodeList::Remove(const Node& node) {
    const std::size_t index = IndexOf(node);
    if (index == nodes_.size()) return nullptr;
    std::unique_ptr<Node> taken = std::move(nodes_[index]);
    nodes_.erase(nodes_.begin() + static_cast<std::ptrdiff_t>(index));
    list_.Erase(index);
    return taken;
}

bool NodeList::Move(const Node& node, std::size_t index) {
    std::unique_ptr<Node> taken = Remove(node);
    if (!taken) return false;
    Insert(index, std::move(taken));
    return true;
}

Node* NodeList::Find(std::string_view name) const {
    if (indexed_revision_ != list_.Revision()) {
        by_name_.clear();
        by_name_.reserve(nodes_.size());
        for (const auto& node : nodes_) by_name_.try_emplace(node->Name().Str(), node.get());
        indexed_revision_ = list_.Revision();
    }
    const auto found = by_name_.find(name);
    return found == by_name_.end() ? nullptr : found->second;
}

Node* NodeList::FollowName(std::string_view& rest) const {
    const bool bracket = !rest.empty() && rest[0] == '(';
    for (std::size_t end = rest.size() + 1; end-- > 0;) {
        if (end < rest.size() && rest[end] != '/' && rest[end] != ':') continue;
        std::string_view name = rest.substr(0, end);
        if (bracket && name.size() >= 2 && name.back() == ')')
            name = name.substr(1, name.size() - 2);
        if (Node* node = Find(name)) {
            rest.remove_prefix(end);
            return node;
        }
    }
    return nullptr;
}

}  // namespace fixtop::casehost
