// SPDX-License-Identifier: Apache-2.0
#pragma once

// Solves that somebody looks on at.

#include <memory>
#include <string>

#include "exit_code.h"

namespace fixtop {

namespace client {
struct Released;
}
class CaseSession;
class Output;

// Notes why the last solve did not complete, where the host knows it.
void TellWhyIncomplete(CaseSession& session, Output& out);

// Saves the case as a solve has left it, unless the file's name is empty; one of which not all
// stores were taken, or that was interrupted, is not saved, which is noted.
ExitCode SaveSolved(CaseSession& session, bool all_taken, const std::string& file, Output& out);

// Notes at a terminal that what a word of the program stored is gone with it, without a file to
// save to: what is printed may be taken for what the case holds by now. The shell asks at its end.
void TellUnsaved(CaseSession& session, const std::string& file, Output& out);

// Solves as case_session.h has it, as somebody looks on.
client::Released SolveWithProgress(CaseSession& session);

// Counts the steps of a solve on the terminal while it lives, with the share that is done where the
// solver knows it. Silent when messages go elsewhere.
class Progress {
 public:
    explicit Progress(CaseSession& session);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

 private:
    std::shared_ptr<void> listener_;
    int steps_ = 0;
};

}  // namespace fixtop
