// SPDX-License-Identifier: Apache-2.0
#pragma once

// SelectionObject: chosen nodes in an order, read and written together, saved and found again. The
// first node decides the view that all are of.

#include <optional>

#include "dispatch/script_object.h"
#include "fixtop/client/selection.h"
#include "objects/session.h"

namespace fixtop::hovex {

class SelectionObject final : public ScriptObject {
 public:
    SelectionObject(SharedSession session, client::Selection selection);

    // Empty. Throws ScriptError without a case.
    static ScriptValue Make(const SharedSession& session);
    // Of the text by which programs hand over selections. Throws ScriptError when it is none.
    static ScriptValue MakeOfText(const SharedSession& session, const std::string& text);

 protected:
    std::span<const MemberRow> Rows() const override;

 private:
    static const MemberRow kRows[];

    ScriptValue Item(const Call& call);
    ScriptValue Count(const Call& call);
    ScriptValue Add(const Call& call);
    ScriptValue Remove(const Call& call);
    ScriptValue Path(const Call& call);
    ScriptValue Paths(const Call& call);
    ScriptValue Unit(const Call& call);
    ScriptValue Units(const Call& call);
    ScriptValue Read(const Call& call);
    ScriptValue Statuses(const Call& call);
    ScriptValue Write(const Call& call);
    ScriptValue States(const Call& call);
    ScriptValue Candidates(const Call& call);
    ScriptValue Save(const Call& call);
    ScriptValue Load(const Call& call);
    ScriptValue NewEnum(const Call& call);

    std::size_t ItemOf(const Call& call) const;
    client::Node NodeFor(const VARIANT& given) const;

    SharedSession session_;
    client::Selection selection_;
};

}  // namespace fixtop::hovex
