// SPDX-License-Identifier: Apache-2.0
#pragma once

// What stands below a node as members by name. An object of the neutral view has the attributes of
// its class, also where this one lacks them; any other node has its children.

#include <windows.h>
// The component services follow the base header.
#include <oaidl.h>

#include <optional>
#include <string>
#include <vector>

#include "fixtop/client/node.h"

namespace fixtop::hovex {

// As the tree has it; case of letters does not count. Nothing when there is no such member.
std::optional<std::string> NameOfOwnMember(const client::Node& node, const std::string& name);

class OwnMember {
 public:
    // A name that NameOfOwnMember has answered for this node, or one like it.
    OwnMember(const client::Node& node, const std::string& name);

    // The class says that there may be several.
    bool IsList() const { return is_list_; }
    // The one that is there; null when the node lacks it.
    std::optional<client::Node> Any() const;
    // Throws client::NotFound.
    client::Node Single() const;
    std::vector<client::Node> All() const;
    // Of a list by its place, from 0, or by its key; of another member a child of it. Throws.
    client::Node Element(const VARIANT& which) const;

 private:
    client::Node node_;
    std::string step_;
    bool is_list_ = false;
};

// Of nodes by its place, from 0, or by its key or name. Throws ScriptError.
client::Node PickFrom(const std::vector<client::Node>& nodes, const VARIANT& which);

}  // namespace fixtop::hovex
