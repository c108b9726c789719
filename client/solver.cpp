// SPDX-License-Identifier: Apache-2.0
#include "fixtop/client/solver.h"

#include "case_state.h"

namespace fixtop::client {

namespace {

// A solve may take this many turns to begin.
constexpr int kTurnsToBegin = 3;
constexpr int kComplete = 0;
constexpr int kIncomplete = 1;
constexpr int kStateChanged = 3;
constexpr char kCompleteText[] = "Solve is complete";
constexpr char kIncompleteText[] = "Solve did not complete";
constexpr char kNothingToSolve[] = "Solver is complete";
constexpr char kDynamicsText[] = "Simulation is in dynamics mode";

// Hears how a solve ended.
class EndListener {
 public:
    explicit EndListener(FISolver& solver) : solver_(solver) {
        for (const int kind : {kComplete, kIncomplete}) solver_.Subscribe(this, kind, &OnEnd);
    }
    ~EndListener() {
        for (const int kind : {kComplete, kIncomplete}) solver_.Unsubscribe(this, kind);
    }
    EndListener(const EndListener&) = delete;
    EndListener& operator=(const EndListener&) = delete;

    bool HasEnded() const { return ended_; }
    const SolveResult& End() const { return end_; }

 private:
    static void OnEnd(void* owner, int kind, const FIErrorList* report) {
        auto& self = *static_cast<EndListener*>(owner);
        self.ended_ = true;
        self.end_.complete = kind == kComplete;
        if (report && !report->empty()) self.end_.message = report->back().text.ToText();
    }

    FISolver& solver_;
    bool ended_ = false;
    SolveResult end_;
};

class StateListener {
 public:
    StateListener(std::shared_ptr<CaseState> state, std::function<void()> change)
        : state_(std::move(state)), change_(std::move(change)) {
        state_->GetSolver()->Subscribe(this, kStateChanged,
                                       [](void* owner, int, const FIErrorList*) {
                                           static_cast<StateListener*>(owner)->change_();
                                       });
    }
    ~StateListener() { state_->GetSolver()->Unsubscribe(this, kStateChanged); }
    StateListener(const StateListener&) = delete;
    StateListener& operator=(const StateListener&) = delete;

 private:
    std::shared_ptr<CaseState> state_;
    std::function<void()> change_;
};

bool Knows(FISolver& solver, const char* text) {
    FIErrorList against;
    solver.CheckSolve(against);
    for (const FIErrorRecord& record : against) {
        if (record.text.ToText() == text) return true;
    }
    return false;
}

SolveResult SolveInOnePass(FISolver& solver) {
    FIErrorList report;
    solver.SolveOnceNow(report);
    if (report.empty()) return {false, kIncompleteText, ""};
    return {report.back().code == kSeverityNote, report.back().text.ToText(), ""};
}

void SetSwitch(FISolver* solver, const char* name, bool on) {
    FIValue refused;
    if (solver) solver->SetAttribute(FIValue(name), FIValue(on ? "true" : "false"), refused);
}

// False when the solve is to stop.
bool Goes(const Solver::Progress& progress) {
    return !progress || progress();
}

SolveResult RunToEnd(CaseState& state, FISolver& solver, const Solver& self,
                     const Solver::Progress& progress) {
    EndListener listener(solver);
    if (!solver.Run()) {
        SolveResult end = SolveInOnePass(solver);
        Goes(progress);
        return end;
    }
    for (int idle = 0; !listener.HasEnded() && idle < kTurnsToBegin;) {
        if (!state.Host().Turn()) return SolveInOnePass(solver);
        idle = self.IsRunning() ? 0 : idle + 1;
        if (!Goes(progress)) solver.Stop();
    }
    if (listener.HasEnded()) return listener.End();
    // A case that is not connected tells nobody of its end.
    const bool complete = Knows(solver, kNothingToSolve);
    return {complete, complete ? kCompleteText : kIncompleteText, ""};
}

}  // namespace

SolveResult Solver::Solve(const Progress& progress) const {
    FISolver* solver = case_->GetSolver();
    if (!solver) return {false, "The case has no solver", ""};
    if (Knows(*solver, kDynamicsText)) return {false, kDynamicsText, ""};
    const bool solves_on_store = SolvesOnStore();
    SolveResult end = RunToEnd(*case_, *solver, *this, progress);
    if (!end.complete) end.problem = Problem();
    SolveOnStore(solves_on_store);
    return end;
}

void Solver::WaitUntilIdle(const Progress& progress) const {
    for (int idle = 0; idle < kTurnsToBegin; idle = IsRunning() ? 0 : idle + 1) {
        if (!case_->Host().Turn()) return;
        if (!Goes(progress)) case_->GetSolver()->Stop();
    }
}

std::string Solver::Problem() const {
    return case_->Host().SolveProblem();
}

bool Solver::IsRunning() const {
    return case_->Top().Attribute("status").ToText() == "Solver running.";
}

bool Solver::IsComplete() const {
    FISolver* solver = case_->GetSolver();
    return solver && Knows(*solver, kNothingToSolve);
}

bool Solver::SolvesOnStore() const {
    FIValue on;
    if (FISolver* solver = case_->GetSolver()) solver->GetAttribute(FIValue("autosolve"), on);
    return on.AsInt() != 0;
}

void Solver::SolveOnStore(bool on) const {
    if (SolvesOnStore() != on) SetSwitch(case_->GetSolver(), "autosolve", on);
}

void Solver::WaitOnStore(bool on) const {
    SetSwitch(case_->GetSolver(), "wait_for_solve", on);
}

std::shared_ptr<void> Solver::OnStateChange(std::function<void()> change) const {
    if (!case_->GetSolver()) return nullptr;
    return std::make_shared<StateListener>(case_, std::move(change));
}

Batch::Batch(const Solver& solver) : solver_(solver), was_on_(solver.SolvesOnStore()) {
    solver_.SolveOnStore(false);
}

Batch::~Batch() {
    if (is_open_ && was_on_) solver_.SolveOnStore(true);
}

SolveResult Batch::Solve(const Solver::Progress& progress) {
    SolveResult result = solver_.Solve(progress);
    solver_.SolveOnStore(was_on_);
    is_open_ = false;
    return result;
}

}  // namespace fixtop::client
