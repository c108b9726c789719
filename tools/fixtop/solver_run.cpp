// SPDX-License-Identifier: Apache-2.0
#include "solver_run.h"

#include <cstdio>

#include "case_session.h"
#include "line_text.h"
#include "output.h"
#include "terminal.h"

namespace fixtop {

namespace {

// ", 45 %", or nothing.
std::string PercentOf(const client::Solver& solver) {
    const auto share = solver.DoneShare();
    return share ? ", " + std::to_string(static_cast<int>(100 * *share)) + " %" : "";
}

}  // namespace

void TellWhyIncomplete(CaseSession& session, Output& out) {
    const std::string problem = session.Solver().Problem();
    if (!problem.empty()) out.Note(OneLineMessage(problem));
}

// A case that lacks a store is another one than was meant.
ExitCode SaveSolved(CaseSession& session, bool all_taken, const std::string& file, Output& out) {
    if (all_taken && !terminal::IsInterrupted()) return SaveTo(session, file, out);
    if (!file.empty()) out.Note(OneLineMessage(file) + ": not saved");
    return ExitCode::kFailed;
}

void TellUnsaved(CaseSession& session, const std::string& file, Output& out) {
    const bool is_lost = file.empty() && !session.TheChanges().AreKept();
    if (is_lost && terminal::NotesAreSeen()) out.Note("not saved; --save FILE keeps the change");
}

client::Released SolveWithProgress(CaseSession& session) {
    const Progress progress(session);
    return SolveCase(session);
}

Progress::Progress(CaseSession& session) {
    if (!terminal::NotesAreSeen()) return;
    listener_ = session.Solver().OnStateChange([this, solver = session.Solver()] {
        std::fprintf(stderr, "\rsolving, step %d%-7s", ++steps_, PercentOf(solver).c_str());
    });
}

Progress::~Progress() {
    if (listener_) std::fprintf(stderr, "\r%31s\r", "");
}

}  // namespace fixtop
