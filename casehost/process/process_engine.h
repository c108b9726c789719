// SPDX-License-Identifier: Apache-2.0
#pragma once

// The steady-state solver as the engine of a live case.
//
// One turn does a share of the work such that a case without recycles takes CaseData::solve_turns
// turns; recycle passes come on top. A recorded case can't be computed: Prepare answers `failed`.
// A solve fails when any object ends with a status other than ok or warning; the message is the
// text of the first such object that has a reason of its own.

#include <memory>
#include <optional>

#include "casehost/solve_engine.h"
#include "process/flowsheet_solver.h"

namespace fixtop::casehost::process {

class ProcessEngine : public SolveEngine {
 public:
    Outcome Prepare(const CaseData& problem) override;
    Outcome Step(int turn) override;
    // By the steps; nothing within a recycle, which goes on until it converges.
    std::optional<double> DoneShare() const override;
    const CaseData& Results() const override { return data_; }

    // Gives the solve under way up. What was found so far stands in Results().
    void Cancel();

 private:
    Outcome Finish();

    CaseData data_;
    Flowsheet sheet_;
    std::optional<Thermo> thermo_;
    std::unique_ptr<FlowsheetSolver> solver_;
    std::size_t steps_ = 0;  // of a solve without passes through recycles
    std::size_t steps_per_turn_ = 1;
    Outcome last_;
};

}  // namespace fixtop::casehost::process
