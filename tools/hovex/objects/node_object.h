// SPDX-License-Identifier: Apache-2.0
#pragma once

// NodeObject: a place in the tree as scripts hold it. What stands below it are members of its own:
// of an object of the neutral view the attributes of its class, elsewhere its children.

#include "dispatch/script_object.h"
#include "fixtop/client/node.h"
#include "objects/session.h"

namespace fixtop::hovex {

class NodeObject final : public ScriptObject {
 public:
    NodeObject(SharedSession session, client::Node node);

    static ScriptValue Make(const SharedSession& session, client::Node node);
    // Nothing for none.
    static ScriptValue Make(const SharedSession& session, std::optional<client::Node> node);
    // The node of an argument; null when it is no object of ours.
    static const client::Node* Of(const VARIANT& argument);

 protected:
    std::span<const MemberRow> Rows() const override;
    void CheckAlive() const override;
    std::optional<std::string> OwnName(const std::string& name) override;
    ScriptValue RunOwn(const std::string& name, MemberRow::Kind kind, const Call& call) override;

 private:
    static const MemberRow kRows[];

    ScriptValue Name(const Call& call);
    ScriptValue Key(const Call& call);
    ScriptValue Path(const Call& call);
    ScriptValue Type(const Call& call);
    ScriptValue Value(const Call& call);
    ScriptValue PutValue(const Call& call);
    ScriptValue SetValue(const Call& call);
    ScriptValue ValueIn(const Call& call);
    ScriptValue Unit(const Call& call);
    ScriptValue PutUnit(const Call& call);
    ScriptValue Status(const Call& call);
    ScriptValue IsOld(const Call& call);
    ScriptValue Attribute(const Call& call);
    ScriptValue Children(const Call& call);
    ScriptValue Find(const Call& call);
    ScriptValue Exists(const Call& call);
    ScriptValue Matches(const Call& call);
    ScriptValue Parent(const Call& call);
    ScriptValue Raw(const Call& call);
    ScriptValue Neutral(const Call& call);

    SharedSession session_;
    client::Node node_;
};

// Stores what a script gives; throws client::Refused, and ScriptError while a solve runs.
void StoreGiven(const Session& session, const client::Node& node, const VARIANT& value,
                const std::string& unit = "");

}  // namespace fixtop::hovex
