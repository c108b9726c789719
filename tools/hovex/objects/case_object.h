// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dispatch/script_object.h"
#include "objects/session.h"

namespace fixtop::hovex {

// What CreateObject("Fixtop.Case") makes: one case, not yet open.
class CaseObject final : public ScriptObject {
 public:
    CaseObject() : session_(std::make_shared<Session>()) {}

 protected:
    std::span<const MemberRow> Rows() const override;

 private:
    static const MemberRow kRows[];

    ScriptValue Open(const Call& call);
    ScriptValue IsOpen(const Call& call);
    ScriptValue Save(const Call& call);
    ScriptValue Close(const Call& call);
    ScriptValue Raw(const Call& call);
    ScriptValue Neutral(const Call& call);
    ScriptValue Flowsheet(const Call& call);
    ScriptValue Find(const Call& call);
    ScriptValue Matches(const Call& call);
    ScriptValue Collect(const Call& call);
    ScriptValue Paste(const Call& call);
    ScriptValue Solve(const Call& call);
    ScriptValue Solver(const Call& call);
    ScriptValue Remarks(const Call& call);
    ScriptValue HasOldResults(const Call& call);
    ScriptValue UseUnitSet(const Call& call);
    ScriptValue Folder(const Call& call);
    ScriptValue PutFolder(const Call& call);
    ScriptValue Version(const Call& call);
    ScriptValue ProcessId(const Call& call);

    SharedSession session_;
};

}  // namespace fixtop::hovex
