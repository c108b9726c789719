// SPDX-License-Identifier: Apache-2.0
#pragma once

// Solving a case, and stores that are solved together.

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "fixtop/client/node.h"

namespace fixtop::client {

struct SolveResult {
    bool complete = false;
    std::string message;  // as the solver puts it
    std::string problem;  // why it is not complete, as far as the host tells
};

class Solver {
 public:
    explicit Solver(std::shared_ptr<CaseState> open_case) : case_(std::move(open_case)) {}

    // Called after each turn of the host's loop; false stops the solve.
    using Progress = std::function<bool()>;
    // Starts the solver and waits for its end. Solvers that run in one pass call `progress` once.
    SolveResult Solve(const Progress& progress = {}) const;
    // Waits until a solve that something else began has ended.
    void WaitUntilIdle(const Progress& progress = {}) const;
    // Why the last solve is not complete, as far as the host tells; empty when it is.
    std::string Problem() const;
    bool IsRunning() const;
    // How much of the solve under way is done, from 0 to 1, where the host knows it.
    std::optional<double> DoneShare() const;
    // Nothing has changed since a solve that was complete.
    bool IsComplete() const;
    // Whether a store starts the solver.
    bool SolvesOnStore() const;
    void SolveOnStore(bool on) const;
    // Whether a store waits for the solve that it starts.
    void WaitOnStore(bool on) const;
    // Calls `change` with each change of the solver's state while the result lives.
    std::shared_ptr<void> OnStateChange(std::function<void()> change) const;

 private:
    std::shared_ptr<CaseState> case_;
};

// Stores do not start the solver while a batch is open; Solve runs it once for all of them and ends
// the batch. One that goes without lets the solver start then.
class Batch {
 public:
    explicit Batch(const Solver& solver);
    ~Batch();
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    SolveResult Solve(const Solver::Progress& progress = {});

 private:
    Solver solver_;
    bool was_on_;
    bool is_open_ = true;
};

}  // namespace fixtop::client
