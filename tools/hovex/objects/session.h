// SPDX-License-Identifier: Apache-2.0
#pragma once

// Session: what the objects of one Fixtop.Case share.

#include <memory>
#include <optional>
#include <string>

#include "fixtop/client/case.h"

namespace fixtop::hovex {

class Session : public std::enable_shared_from_this<Session> {
 public:
    // The open case; throws ScriptError when there is none.
    const client::Case& Open() const;
    bool IsOpen() const { return open_.has_value(); }
    // Opens a file, or the built-in case by its name, in place of what was open. Throws
    // client::CaseError; what was open stays so then.
    void OpenFile(const std::string& file);
    void Close();
    // Under its own name when that is empty. Throws.
    void Save(const std::string& file);

    // Stores and whatever else changes the case wait for nobody: throws ScriptError while a solve
    // runs, which lets calls in.
    void NeedsRest() const;
    // From a start on.
    bool IsSolving() const { return is_solving_; }
    // Waits for its end. Throws ScriptError without a case.
    const client::SolveResult& Solve();
    // The same once the caller is gone.
    void Start();
    // The running solve ends at its next turn.
    void Stop() { is_to_stop_ = true; }
    const client::SolveResult& LastSolve() const { return last_solve_; }

 private:
    void Begin();
    void RunToEnd();

    std::optional<client::Case> open_;
    std::string file_;
    bool is_solving_ = false;
    bool is_to_stop_ = false;
    client::SolveResult last_solve_;
};

using SharedSession = std::shared_ptr<Session>;

}  // namespace fixtop::hovex
