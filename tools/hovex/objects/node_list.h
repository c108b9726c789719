// SPDX-License-Identifier: Apache-2.0
#pragma once

// NodeList: nodes that were found, in their order, counted from 0.

#include <vector>

#include "dispatch/script_object.h"
#include "fixtop/client/node.h"
#include "objects/session.h"

namespace fixtop::hovex {

class NodeList final : public ScriptObject {
 public:
    NodeList(SharedSession session, std::vector<client::Node> nodes);

    static ScriptValue Make(const SharedSession& session, std::vector<client::Node> nodes);

 protected:
    std::span<const MemberRow> Rows() const override;

 private:
    static const MemberRow kRows[];

    ScriptValue Item(const Call& call);
    ScriptValue Count(const Call& call);
    ScriptValue NewEnum(const Call& call);

    SharedSession session_;
    std::vector<client::Node> nodes_;
};

}  // namespace fixtop::hovex
