// SPDX-License-Identifier: Apache-2.0
#include "objects/solver_object.h"

#include "process_life.h"

namespace fixtop::hovex {

constinit const MemberRow SolverObject::kRows[] = {
    Reads<&SolverObject::Solve>("Solve", 1),
    Reads<&SolverObject::Start>("Start", 2),
    Reads<&SolverObject::Stop>("Stop", 3),
    Reads<&SolverObject::IsRunning>("IsRunning", 4),
    Reads<&SolverObject::IsComplete>("IsComplete", 5),
    Reads<&SolverObject::Message>("Message", 6),
    Reads<&SolverObject::Problem>("Problem", 7),
    Reads<&SolverObject::SolvesOnStore>("SolvesOnStore", 8),
    Stores<&SolverObject::PutSolvesOnStore>("SolvesOnStore", 8),
};

std::span<const MemberRow> SolverObject::Rows() const {
    return kRows;
}

ScriptValue SolverObject::Solve(const Call&) {
    return ScriptValue::Of(session_->Solve().complete);
}

ScriptValue SolverObject::Start(const Call&) {
    session_->Start();
    return {};
}

ScriptValue SolverObject::Stop(const Call&) {
    session_->Stop();
    return {};
}

ScriptValue SolverObject::IsRunning(const Call&) {
    return ScriptValue::Of(session_->IsSolving());
}

ScriptValue SolverObject::IsComplete(const Call&) {
    return ScriptValue::Of(!session_->IsSolving() && session_->Open().GetSolver().IsComplete());
}

ScriptValue SolverObject::Message(const Call&) {
    return ScriptValue::Of(session_->LastSolve().message);
}

ScriptValue SolverObject::Problem(const Call&) {
    return ScriptValue::Of(session_->Open().GetSolver().Problem());
}

ScriptValue SolverObject::SolvesOnStore(const Call&) {
    return ScriptValue::Of(session_->Open().GetSolver().SolvesOnStore());
}

ScriptValue SolverObject::PutSolvesOnStore(const Call& call) {
    session_->NeedsRest();
    session_->Open().GetSolver().SolveOnStore(TruthOf(call.At(0)));
    return {};
}

}  // namespace fixtop::hovex
