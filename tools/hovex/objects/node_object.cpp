// SPDX-License-Identifier: Apache-2.0
#include "objects/node_object.h"

#include <utility>

#include "fixtop/client/error.h"
#include "objects/node_list.h"
#include "objects/own_members.h"

namespace fixtop::hovex {

namespace {

constexpr char kGone[] = "is no longer there";

}  // namespace

constinit const MemberRow NodeObject::kRows[] = {
    Reads<&NodeObject::Value>("Value", 0),
    Stores<&NodeObject::PutValue>("Value", 0),
    Reads<&NodeObject::Name>("Name", 1),
    Reads<&NodeObject::Key>("Key", 2),
    Reads<&NodeObject::Path>("Path", 3),
    Reads<&NodeObject::Type>("Type", 4),
    Reads<&NodeObject::Unit>("Unit", 5),
    Stores<&NodeObject::PutUnit>("Unit", 5),
    Reads<&NodeObject::SetValue>("SetValue", 6, 1, 2),
    Reads<&NodeObject::ValueIn>("ValueIn", 7, 1, 1),
    Reads<&NodeObject::Status>("Status", 8),
    Reads<&NodeObject::IsOld>("IsOld", 9),
    Reads<&NodeObject::Attribute>("Attribute", 10, 1, 1),
    Reads<&NodeObject::Children>("Children", 11, 0, 1),
    Reads<&NodeObject::Find>("Find", 12, 1, 1),
    Reads<&NodeObject::Exists>("Exists", 13, 1, 1),
    Reads<&NodeObject::Matches>("Matches", 14, 1, 1),
    Reads<&NodeObject::Parent>("Parent", 15),
    Reads<&NodeObject::Raw>("Raw", 16),
    Reads<&NodeObject::Neutral>("Neutral", 17),
};

NodeObject::NodeObject(SharedSession session, client::Node node)
    : session_(std::move(session)), node_(std::move(node)) {}

ScriptValue NodeObject::Make(const SharedSession& session, client::Node node) {
    return ScriptValue::Object(new NodeObject(session, std::move(node)));
}

ScriptValue NodeObject::Make(const SharedSession& session, std::optional<client::Node> node) {
    return node ? Make(session, std::move(*node)) : ScriptValue::Object(nullptr);
}

const client::Node* NodeObject::Of(const VARIANT& argument) {
    const auto* object = dynamic_cast<NodeObject*>(Behind(argument));
    return object ? &object->node_ : nullptr;
}

std::span<const MemberRow> NodeObject::Rows() const {
    return kRows;
}

void NodeObject::CheckAlive() const {
    if (node_.IsGone()) throw client::Gone("the node", kGone);
}

std::optional<std::string> NodeObject::OwnName(const std::string& name) {
    return NameOfOwnMember(node_, name);
}

ScriptValue NodeObject::RunOwn(const std::string& name, MemberRow::Kind kind, const Call& call) {
    const OwnMember member(node_, name);
    if (kind == MemberRow::kStore) {
        if (call.Count() != 1) throw CallError(DISP_E_BADPARAMCOUNT);
        if (member.IsList()) throw ScriptError(name + " is a list: store into one of it");
        StoreGiven(*session_, member.Single(), call.At(0));
        return {};
    }
    if (call.Count() > 1) throw CallError(DISP_E_BADPARAMCOUNT);
    if (call.Count() == 1) return Make(session_, member.Element(call.At(0)));
    if (member.IsList()) return NodeList::Make(session_, member.All());
    return Make(session_, member.Any());
}

ScriptValue NodeObject::Name(const Call&) {
    return ScriptValue::Of(node_.Name());
}

ScriptValue NodeObject::Key(const Call&) {
    return ScriptValue::Of(node_.Key());
}

ScriptValue NodeObject::Path(const Call&) {
    return ScriptValue::Of(node_.Path());
}

ScriptValue NodeObject::Type(const Call&) {
    return ScriptValue::Of(node_.Type());
}

ScriptValue NodeObject::Value(const Call&) {
    return ScriptValue::Of(node_.Read().value);
}

ScriptValue NodeObject::PutValue(const Call& call) {
    StoreGiven(*session_, node_, call.At(0));
    return {};
}

ScriptValue NodeObject::SetValue(const Call& call) {
    StoreGiven(*session_, node_, call.At(0), call.TextIfAny(1));
    return {};
}

ScriptValue NodeObject::ValueIn(const Call& call) {
    const std::string unit = call.Text(0);
    const client::Reading reading = node_.Read(unit);
    const std::string problem = client::OtherUnit("value", reading, unit);
    if (!problem.empty()) throw client::Refused(node_.Path(), problem);
    return ScriptValue::Of(reading.value);
}

ScriptValue NodeObject::Unit(const Call&) {
    return ScriptValue::Of(node_.UnitOf("value"));
}

ScriptValue NodeObject::PutUnit(const Call& call) {
    node_.ShowIn(call.Text(0));
    return {};
}

ScriptValue NodeObject::Status(const Call&) {
    return ScriptValue::Of(node_.Read().status);
}

ScriptValue NodeObject::IsOld(const Call&) {
    return ScriptValue::Of(node_.IsStale());
}

ScriptValue NodeObject::Attribute(const Call& call) {
    return ScriptValue::Of(node_.Attribute(call.Text(0)));
}

ScriptValue NodeObject::Children(const Call& call) {
    if (call.Count() == 0) return NodeList::Make(session_, node_.Children());
    return Make(session_, PickFrom(node_.Children(), call.At(0)));
}

ScriptValue NodeObject::Find(const Call& call) {
    return Make(session_, node_.At(call.Text(0)));
}

ScriptValue NodeObject::Exists(const Call& call) {
    return ScriptValue::Of(node_.Find(call.Text(0)).has_value());
}

ScriptValue NodeObject::Matches(const Call& call) {
    return NodeList::Make(session_, node_.Matches(call.Text(0)));
}

ScriptValue NodeObject::Parent(const Call&) {
    return Make(session_, node_.Parent());
}

ScriptValue NodeObject::Raw(const Call&) {
    return Make(session_, node_.Raw());
}

ScriptValue NodeObject::Neutral(const Call&) {
    return Make(session_, node_.Neutral());
}

void StoreGiven(const Session& session, const client::Node& node, const VARIANT& value,
                const std::string& unit) {
    session.NeedsRest();
    if (IsText(value)) return node.Store(TextOf(value), unit);
    node.Store(ValueOf(value), unit);
}

}  // namespace fixtop::hovex
