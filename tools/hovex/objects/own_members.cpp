// SPDX-License-Identifier: Apache-2.0
#include "objects/own_members.h"

#include <string_view>

#include "dispatch/script_error.h"
#include "dispatch/script_value.h"
#include "dispatch/text.h"
#include "objects/class_members.h"

namespace fixtop::hovex {

namespace {

// Of an object of the neutral view; null for any other node, and where the class is not known.
const ClassMember* MemberOfClass(const client::Node& node, const std::string& name,
                                 bool& has_class) {
    const std::string class_name = ClassOfType(node.Type());
    has_class = ClassMembers::The().Knows(class_name);
    return has_class ? ClassMembers::The().Find(class_name, name) : nullptr;
}

std::optional<std::string> NameOfChild(const client::Node& node, const std::string& name) {
    if (node.Find(client::WrittenName(name))) return name;
    std::optional<std::string> found;
    node.ForEachChild([&](const client::Child& child) {
        if (SameName(child.name, name)) found = child.name;
        return !found;
    });
    return found;
}

}  // namespace

std::optional<std::string> NameOfOwnMember(const client::Node& node, const std::string& name) {
    bool has_class = false;
    if (const ClassMember* member = MemberOfClass(node, name, has_class)) return member->name;
    return has_class ? std::nullopt : NameOfChild(node, name);
}

OwnMember::OwnMember(const client::Node& node, const std::string& name)
    : node_(node), step_(client::WrittenName(name)) {
    bool has_class = false;
    const ClassMember* member = MemberOfClass(node, name, has_class);
    is_list_ = member && member->is_list;
}

std::optional<client::Node> OwnMember::Any() const {
    auto found = node_.Find(step_);
    if (!found) return std::nullopt;
    return std::move(found->node);
}

client::Node OwnMember::Single() const {
    return node_.At(step_);
}

std::vector<client::Node> OwnMember::All() const {
    return node_.Matches(step_);
}

client::Node OwnMember::Element(const VARIANT& which) const {
    if (!is_list_) return PickFrom(Single().Children(), which);
    if (IsText(which)) return node_.At(step_ + '(' + client::WrittenKey(TextOf(which)) + ')');
    return PickFrom(All(), which);
}

client::Node PickFrom(const std::vector<client::Node>& nodes, const VARIANT& which) {
    if (!IsText(which)) {
        const int place = IntegerOf(which);
        if (place >= 0 && place < static_cast<int>(nodes.size())) {
            return nodes[static_cast<std::size_t>(place)];
        }
        throw ScriptError("no element " + std::to_string(place) + ": there are " +
                          std::to_string(nodes.size()) + ", counted from 0");
    }
    const std::string wanted = TextOf(which);
    for (const client::Node& node : nodes) {
        if (node.Key() == wanted || node.Name() == wanted) return node;
    }
    throw ScriptError("no element is called " + wanted);
}

}  // namespace fixtop::hovex
