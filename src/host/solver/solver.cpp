// SPDX-License-Identifier: Apache-2.0
#include "host/solver/solver.h"

#include <array>
#include <cstring>
#include <optional>

#include "diagnostics/memory_guard.h"
#include "host/adapter.h"
#include "host/host_access.h"
#include "host/host_attributes.h"
#include "host/solver/solve_wait.h"

namespace fixtop {

namespace {

constexpr char kNotSupportedSlot[] = "Not Supported";

// The four texts; nothing for any other value.
std::optional<bool> SwitchText(const FIValue& value) {
    const char* text = value.IsText() ? value.CStr() : "";
    if (std::strcmp(text, "true") == 0 || std::strcmp(text, "1") == 0) return true;
    if (std::strcmp(text, "false") == 0 || std::strcmp(text, "0") == 0) return false;
    return std::nullopt;
}

std::optional<bool> SwitchValue(const FIValue& value) {
    return value.Kind() == FIValue::kInt ? value.AsInt() != 0 : SwitchText(value);
}

constexpr char kMismatch[] = "Argument type mismatch for autosolve.";

}  // namespace

HSolverBase::HSolverBase(host::SimulationCase* simulation_case)
    : life_(CaseLife::Of(CaseOrActive(simulation_case))) {}

void HSolverBase::Options(FIErrorList& errors) {
    errors.push_back(SolverRecord(kSeverityNotSupported, kNotSupportedSlot));
}

host::FlowSheetSolver* HSolverBase::MainSolver() const {
    return Case() ? Case()->MainSolver() : nullptr;
}

HSSSolver::HSSSolver(host::SimulationCase* simulation_case)
    : HSolverBase(simulation_case), notify_(life_->Notifier()) {}

std::span<const AttrRow<HSSSolver>> HSSSolver::AttributeRows() {
    using Self = HSSSolver;
    static const AttrRow<Self> rows[] = {
        {"id", [](Self&, FIValue& out) { out.SetText("Solver"); }},
        {"type", [](Self&, FIValue& out) { out.SetText("HSSSolver"); }},
        {"autosolve",
         [](Self& self, FIValue& out) {
             host::FlowSheetSolver* solver = self.MainSolver();
             out.SetInt(solver && !solver->IsHolding() ? 1 : 0);
         },
         [](Self& self, const FIValue& value, int, FIValue& out) {
             self.SetAutosolve(value, out);
             return true;
         }},
        {"state",
         [](Self& self, FIValue& out) {
             constexpr std::array states = {"stopped", "running", "paused"};
             const auto state = static_cast<std::size_t>(self.notify_->State());
             out.Clear();
             if (state < states.size()) out.SetText(states[state]);
         }},
        {"active",
         [](Self& self, FIValue& out) {
             const bool active = self.Case() && self.Case()->ActiveSolver() == self.MainSolver();
             out.SetText(active ? "true" : "false");
         }},
        {"wait_for_solve",
         [](Self&, FIValue& out) { out.SetInt(TheAdapter().WaitsForSolve() ? 1 : 0); },
         [](Self& self, const FIValue& value, int, FIValue& out) {
             self.SetWaitForSolve(value, out);
             return true;
         }},
    };
    return rows;
}

void* HSSSolver::CheckSolve(FIErrorList& errors) {
    host::FlowSheetSolver* solver = MainSolver();
    if (!solver) return nullptr;
    const auto fail = [&](const char* message) {
        errors.push_back(SolverRecord(kSeverityFailure, message));
    };
    if (IsInDynamics(*Case())) fail("Simulation is in dynamics mode");
    if (!solver->IsHolding()) fail("Solver is already active");
    if (!solver->NeedsToRun()) fail("Solver is complete");
    return nullptr;
}

// Lets the host's solver go; one that could not do its work for lack of memory is held again.
template <class Work>
void HSSSolver::LetGo(Work work) {
    host::FlowSheetSolver* solver = MainSolver();
    try {
        memory::Outside([&] {
            solver->Holding(false);
            work(*solver);
        });
    } catch (...) {
        solver = MainSolver();
        if (solver) solver->Holding(true);
        throw;
    }
}

void HSSSolver::SolveOnceNow(FIErrorList& errors) {
    if (!MainSolver()) return;
    LetGo([](host::FlowSheetSolver& solver) { solver.SolveOnce(); });
    // The pass lets the host's loop run, in which the case may go.
    host::FlowSheetSolver* solver = MainSolver();
    if (!solver) return;
    solver->Holding(true);
    errors.push_back(EndRecord(solver->NeedsToRun()));
}

bool HSSSolver::Run() {
    host::FlowSheetSolver* solver = MainSolver();
    if (!solver || IsInDynamics(*Case()) || !solver->IsHolding() || !solver->NeedsToRun()) {
        return false;
    }
    const HSolverNotify::RunState former = notify_->State();
    notify_->ChangeState(HSolverNotify::kRunning);
    if (!MainSolver()) return false;
    try {
        LetGo([](host::FlowSheetSolver& each) { each.SolveTask(); });
    } catch (...) {
        memory::Contain([&] { notify_->ChangeState(former); });
        throw;
    }
    return true;
}

void HSSSolver::Pause() {
    host::FlowSheetSolver* solver = MainSolver();
    if (!solver || notify_->State() != HSolverNotify::kRunning || !solver->PauseRequested()) return;
    notify_->ChangeState(HSolverNotify::kPaused);
    solver = MainSolver();
    if (solver) solver->Holding(true);
}

void HSSSolver::Resume() {
    if (notify_->State() == HSolverNotify::kPaused) Run();
}

void HSSSolver::Stop() {
    host::FlowSheetSolver* solver = MainSolver();
    if (solver && notify_->State() == HSolverNotify::kRunning) solver->Holding(true);
}

bool HSSSolver::Subscribe(void* owner, int kind, FISolverCallback callback) {
    return notify_->Subscribe(owner, kind, callback);
}

bool HSSSolver::Unsubscribe(void* owner, int kind) {
    return notify_->Unsubscribe(owner, kind);
}

void HSSSolver::GetAttribute(const FIValue& name, FIValue& out) {
    ReadAttribute(*this, name, out);
}

void HSSSolver::SetAttribute(const FIValue& name, const FIValue& value, FIValue& out) {
    WriteAttribute(*this, name, value, 0, kNotSupportedHere, out);
}

void HSSSolver::SetAutosolve(const FIValue& value, FIValue& out) {
    out.Clear();
    host::FlowSheetSolver* solver = MainSolver();
    const std::optional<bool> autosolve = SwitchValue(value);
    if (!autosolve) out = FIValue(kMismatch);
    if (!solver) return;
    if (autosolve) solver->Holding(!*autosolve);
    if (solver->NeedsToRun() && !solver->IsSolving()) {
        memory::Outside([&] { solver->SolveTask(); });
    }
}

void HSSSolver::SetWaitForSolve(const FIValue& value, FIValue& out) {
    out.Clear();
    if (const std::optional<bool> wait = SwitchValue(value)) {
        TheAdapter().SetWaitsForSolve(*wait);
    } else {
        out = FIValue(kMismatch);
    }
}

FIAttributeSource* HSSSolver::GetAttributeSource() {
    return this;
}

std::span<const AttrRow<HDynamicSolver>> HDynamicSolver::AttributeRows() {
    static const AttrRow<HDynamicSolver> rows[] = {
        {"id", [](HDynamicSolver&, FIValue& out) { out.SetText("Solver"); }},
        {"type", [](HDynamicSolver&, FIValue& out) { out.SetText("HDynamicSolver"); }},
    };
    return rows;
}

void* HDynamicSolver::CheckSolve(FIErrorList&) {
    return MainSolver();
}

void HDynamicSolver::SolveOnceNow(FIErrorList& errors) {
    errors.push_back(SolverRecord(kSeverityNotSupported, kNotSupportedSlot));
}

void HDynamicSolver::GetAttribute(const FIValue& name, FIValue& out) {
    ReadAttribute(*this, name, out);
}

void HDynamicSolver::SetAttribute(const FIValue&, const FIValue&, FIValue& out) {
    out = FIValue(kNotSupportedSlot);
}

FIAttributeSource* HDynamicSolver::GetAttributeSource() {
    return this;
}

}  // namespace fixtop
