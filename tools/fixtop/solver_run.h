#pragma once

// Runs a case's solver to its end in turns of the host's loop; values can be watched on the way.

#include <functional>
#include <string>

#include "exit_code.h"

namespace fixtop {

class CaseSession;
class Output;

struct SolveEnd {
    bool complete = false;
    std::string message;  // as the solver puts it
};

// Starts the solver and waits for it. `after_turn` is called after every turn, and may be empty.
SolveEnd SolveToEnd(CaseSession& session, const std::function<void()>& after_turn);

// Lets stores start the solver, which holds after a solve that was asked for.
void LetStoresSolve(CaseSession& session);

// Waits until a solve that something else began has ended.
void WaitUntilIdle(CaseSession& session, const std::function<void()>& after_turn);

// Notes why the last solve did not complete, where the host knows it.
void TellWhyIncomplete(CaseSession& session, Output& out);

// Saves the case as a solve has left it, unless the file's name is empty; one that was interrupted
// is not saved. Notes why not.
ExitCode SaveSolved(CaseSession& session, const std::string& file, Output& out);

// Counts the steps of a solve on the terminal while it lives. Silent when messages go elsewhere.
class Progress {
 public:
    explicit Progress(CaseSession& session);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

 private:
    void Show();

    CaseSession& session_;
    bool shown_ = false;
    int steps_ = 0;
};

}  // namespace fixtop
