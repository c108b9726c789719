#include "solver_run.h"

#include <cstdio>

#include "case_session.h"
#include "line_text.h"
#include "output.h"
#include "terminal.h"

namespace fixtop {

namespace {

// A solve may take this many turns to begin.
constexpr int kTurnsToBegin = 3;
constexpr int kComplete = 0;
constexpr int kIncomplete = 1;
constexpr int kStateChanged = 3;
constexpr const char* kCompleteText = "Solve is complete";
constexpr const char* kIncompleteText = "Solve did not complete";

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
    const SolveEnd& End() const { return end_; }

 private:
    static void OnEnd(void* owner, int kind, const FIErrorList* report) {
        auto& self = *static_cast<EndListener*>(owner);
        self.ended_ = true;
        self.end_.complete = kind == kComplete;
        if (report && !report->empty()) self.end_.message = report->back().text.ToText();
    }

    FISolver& solver_;
    bool ended_ = false;
    SolveEnd end_;
};

bool IsRunning(CaseSession& session) {
    return TextOf(*session.Top(), "status") == "Solver running.";
}

bool StillNeedsToRun(FISolver& solver) {
    FIErrorList against;
    solver.CheckSolve(against);
    for (const FIErrorRecord& record : against) {
        if (record.text.ToText() == "Solver is complete") return false;
    }
    return true;
}

SolveEnd SolveInOnePass(FISolver& solver) {
    FIErrorList report;
    solver.SolveOnceNow(report);
    if (report.empty()) return {false, kIncompleteText};
    return {report.back().code == kSeverityNote, report.back().text.ToText()};
}

}  // namespace

void LetStoresSolve(CaseSession& session) {
    FISolver* solver = session.Solver();
    if (!solver) return;
    const FIValue autosolve("autosolve");
    FIValue on;
    solver->GetAttribute(autosolve, on);
    FIValue refused;
    if (on.AsInt() == 0) solver->SetAttribute(autosolve, FIValue::OfInt(1), refused);
}

void WaitUntilIdle(CaseSession& session, const std::function<void()>& after_turn) {
    for (int idle = 0; idle < kTurnsToBegin; idle = IsRunning(session) ? 0 : idle + 1) {
        session.Turn();
        if (after_turn) after_turn();
    }
}

SolveEnd SolveToEnd(CaseSession& session, const std::function<void()>& after_turn) {
    FISolver* solver = session.Solver();
    if (!solver) return {false, "The case has no solver"};
    FIErrorList against;
    solver->CheckSolve(against);
    if (!against.empty() && against.front().text.ToText() == "Simulation is in dynamics mode") {
        return {false, against.front().text.ToText()};
    }
    EndListener listener(*solver);
    if (!solver->Run()) {
        SolveEnd end = SolveInOnePass(*solver);
        if (after_turn) after_turn();
        return end;
    }
    int idle = 0;
    while (!listener.HasEnded() && idle < kTurnsToBegin) {
        session.Turn();
        idle = IsRunning(session) ? 0 : idle + 1;
        if (after_turn) after_turn();
    }
    if (listener.HasEnded()) return listener.End();
    // A case that is not connected tells nobody of its end.
    const bool complete = !StillNeedsToRun(*solver);
    return {complete, complete ? kCompleteText : kIncompleteText};
}

void TellWhyIncomplete(CaseSession& session, Output& out) {
    const std::string problem = session.SolveProblem();
    if (!problem.empty()) out.Note(problem);
}

ExitCode SaveSolved(CaseSession& session, const std::string& file, Output& out) {
    if (!terminal::IsInterrupted()) return SaveTo(session, file, out);
    if (!file.empty()) out.Note(OneLineMessage(file) + ": not saved");
    return ExitCode::kFailed;
}

Progress::Progress(CaseSession& session) : session_(session) {
    FISolver* solver = terminal::NotesAreSeen() ? session.Solver() : nullptr;
    if (!solver) return;
    shown_ = solver->Subscribe(this, kStateChanged, [](void* owner, int, const FIErrorList*) {
        static_cast<Progress*>(owner)->Show();
    });
}

Progress::~Progress() {
    if (!shown_) return;
    session_.Solver()->Unsubscribe(this, kStateChanged);
    std::fprintf(stderr, "\r%24s\r", "");
}

void Progress::Show() {
    std::fprintf(stderr, "\rsolving, step %d", ++steps_);
}

}  // namespace fixtop
