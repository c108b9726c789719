// SPDX-License-Identifier: Apache-2.0
#include "solver_run.h"

#include <cstdio>

#include "case_session.h"
#include "line_text.h"
#include "output.h"
#include "terminal.h"

namespace fixtop {

void TellWhyIncomplete(CaseSession& session, Output& out) {
    const std::string problem = session.Solver().Problem();
    if (!problem.empty()) out.Note(OneLineMessage(problem));
}

ExitCode SaveSolved(CaseSession& session, const std::string& file, Output& out) {
    if (!terminal::IsInterrupted()) return SaveTo(session, file, out);
    if (!file.empty()) out.Note(OneLineMessage(file) + ": not saved");
    return ExitCode::kFailed;
}

client::Released SolveWithProgress(CaseSession& session) {
    const Progress progress(session);
    return SolveCase(session);
}

Progress::Progress(CaseSession& session) {
    if (!terminal::NotesAreSeen()) return;
    listener_ = session.Solver().OnStateChange(
        [this] { std::fprintf(stderr, "\rsolving, step %d", ++steps_); });
}

Progress::~Progress() {
    if (listener_) std::fprintf(stderr, "\r%24s\r", "");
}

}  // namespace fixtop
