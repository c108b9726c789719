// SPDX-License-Identifier: Apache-2.0
#include "objects/own_members.h"

#include <string_view>

#include "dispatch/script_error.h"
#include "dispatch/script_value.h"
#include "dispatch/text.h"
#include "fixtop/client/typed.h"

namespace fixtop::hovex {

namespace {

// Case of letters does not count, but a name that is the same in this too goes first.
const client::NeutralMember* MemberAlike(const client::NeutralClass& of, const std::string& name) {
    if (const client::NeutralMember* same = of.Find(name)) return same;
    for (const client::NeutralClass* each = &of; each; each = each->base) {
        for (const client::NeutralMember& member : each->members) {
            if (SameName(member.name, name)) return &member;
        }
    }
    return nullptr;
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
    const auto object = client::TypedObject::Of(node);
    if (!object) return NameOfChild(node, name);
    const client::NeutralMember* const member = MemberAlike(object->Class(), name);
    return member ? std::optional(member->name) : std::nullopt;
}

OwnMember::OwnMember(const client::Node& node, const std::string& name)
    : node_(node), step_(client::WrittenName(name)) {
    const auto object = client::TypedObject::Of(node);
    const client::NeutralMember* const member = object ? object->Class().Find(name) : nullptr;
    is_list_ = member && member->kind == client::NeutralMember::Kind::kArray;
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
