// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dispatch/script_object.h"
#include "objects/session.h"

namespace fixtop::hovex {

// The solver of the open case. A solve that was started runs while its caller goes on.
class SolverObject final : public ScriptObject {
 public:
    explicit SolverObject(SharedSession session) : session_(std::move(session)) {}

 protected:
    std::span<const MemberRow> Rows() const override;

 private:
    static const MemberRow kRows[];

    ScriptValue Solve(const Call& call);
    ScriptValue Start(const Call& call);
    ScriptValue Stop(const Call& call);
    ScriptValue IsRunning(const Call& call);
    ScriptValue IsComplete(const Call& call);
    ScriptValue Message(const Call& call);
    ScriptValue Problem(const Call& call);
    ScriptValue SolvesOnStore(const Call& call);
    ScriptValue PutSolvesOnStore(const Call& call);

    SharedSession session_;
};

}  // namespace fixtop::hovex
