// SPDX-License-Identifier: Apache-2.0
#include "objects/node_list.h"

#include <utility>

#include "dispatch/walk.h"
#include "objects/node_object.h"
#include "objects/own_members.h"

namespace fixtop::hovex {

constinit const MemberRow NodeList::kRows[] = {
    Reads<&NodeList::Item>("Item", 0, 1, 1),
    Reads<&NodeList::Count>("Count", 1),
    Reads<&NodeList::NewEnum>("_NewEnum", DISPID_NEWENUM),
};

NodeList::NodeList(SharedSession session, std::vector<client::Node> nodes)
    : session_(std::move(session)), nodes_(std::move(nodes)) {}

ScriptValue NodeList::Make(const SharedSession& session, std::vector<client::Node> nodes) {
    return ScriptValue::Object(new NodeList(session, std::move(nodes)));
}

std::span<const MemberRow> NodeList::Rows() const {
    return kRows;
}

ScriptValue NodeList::Item(const Call& call) {
    return NodeObject::Make(session_, PickFrom(nodes_, call.At(0)));
}

ScriptValue NodeList::Count(const Call&) {
    return ScriptValue::Of(static_cast<int>(nodes_.size()));
}

ScriptValue NodeList::NewEnum(const Call&) {
    std::vector<ScriptValue> elements;
    elements.reserve(nodes_.size());
    for (const client::Node& node : nodes_) elements.push_back(NodeObject::Make(session_, node));
    return Walk::Make(std::move(elements));
}

}  // namespace fixtop::hovex
