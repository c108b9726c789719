// SPDX-License-Identifier: Apache-2.0
#include "host/solver/solve_wait.h"

#include <algorithm>

#include "diagnostics/memory_guard.h"
#include "host/adapter.h"
#include "host/host_access.h"

namespace fixtop {

bool HEditBatch::Add(const Stream& stream) {
    const bool is_new = std::none_of(streams_.begin(), streams_.end(), [&](const Stream& each) {
        return each.Number() == stream.Number() && !each.IsGone();
    });
    if (is_new) streams_.push_back(stream);
    return is_new;
}

bool HEditBatch::Remove(const Stream& stream) {
    return std::erase_if(streams_,
                         [&](const Stream& each) { return each.Number() == stream.Number(); }) > 0;
}

bool HEditBatch::IsOpen() {
    std::erase_if(streams_, [](const Stream& each) { return each.IsGone(); });
    return !streams_.empty();
}

namespace {

host::FlowSheetSolver* SolverOf(const CaseLife& life) {
    host::FlowSheet* flowsheet = FlowSheetOrMain(nullptr, life.Case());
    return flowsheet ? flowsheet->Solver() : nullptr;
}

// One turn of the host's loop; null when the solver is gone after it, or the host.
host::FlowSheetSolver* Turn(const CaseLife& life) {
    host::HostServices* services = TheAdapter().Services();
    if (!services) return nullptr;
    memory::Outside([&] { services->WaitForTurn(0); });
    return TheAdapter().Services() ? SolverOf(life) : nullptr;
}

}  // namespace

void SolveAndWait(const CaseLife& life, bool always_wait) {
    host::FlowSheetSolver* solver = TheAdapter().Services() ? SolverOf(life) : nullptr;
    if (!solver) return;
    memory::Outside([&] { solver->SolveTask(); });
    if (!TheAdapter().WaitsForSolve() && !always_wait) return;
    // A queued solve may take two turns to begin.
    for (int turn = 0; turn < 2 && solver && !solver->IsSolving() && solver->Pending(); ++turn) {
        solver = Turn(life);
    }
    do {
        if (solver) solver = Turn(life);
        if (!solver || solver->Stop()) return;
    } while (solver->IsSolving() || solver->Busy());
}

}  // namespace fixtop
