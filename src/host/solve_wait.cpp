#include "host/solve_wait.h"

#include "host/host_access.h"

namespace {

bool g_wait_for_solve = true;

}  // namespace

HEditBatch& EditBatch() {
    static HEditBatch batch;
    return batch;
}

bool WaitsForSolve() {
    return g_wait_for_solve;
}
void SetWaitsForSolve(bool wait) {
    g_wait_for_solve = wait;
}

void SolveAndWait(host::SimulationCase* simulation_case, bool always_wait) {
    host::HostServices* services = host::InstalledServices();
    host::FlowSheet* flowsheet = FlowSheetOrMain(nullptr, simulation_case);
    host::FlowSheetSolver* solver = flowsheet ? flowsheet->Solver() : nullptr;
    if (!services || !solver) return;
    solver->SolveTask();
    if (!g_wait_for_solve && !always_wait) return;
    // A queued solve may take two turns to begin.
    for (int turn = 0; turn < 2 && !solver->IsSolving() && solver->Pending(); ++turn) {
        services->WaitForTurn(0);
    }
    do {
        services->WaitForTurn(0);
        if (solver->Stop()) return;
    } while (solver->IsSolving() || solver->Busy());
}
