// SPDX-License-Identifier: Apache-2.0
#pragma once

// SolveEngine: what computes the calculated values of a case. The live case owns one, hands it the
// case as plain data when a solve begins, lets it work one step a turn, and takes the results over.

#include <optional>
#include <string>

#include "casehost/case_data.h"

namespace fixtop::casehost {

class SolveEngine {
 public:
    enum class Progress { running, done, failed };
    struct Outcome {
        Progress progress = Progress::done;
        std::string message;  // why it failed; empty otherwise
    };

    virtual ~SolveEngine() = default;

    // Begins a solve of `problem`, of which the engine keeps its own copy. Values of state
    // `calculated` are initial guesses at best. A solve still under way is given up.
    virtual Outcome Prepare(const CaseData& problem) = 0;
    // One turn's share of the work; `turn` counts from 0 since Prepare. The host gives every solve
    // CaseData::solve_turns turns at least, and as many more as the engine answers `running`.
    virtual Outcome Step(int turn) = 0;
    // How much of the solve under way is done, from 0 to 1; nothing while nobody knows.
    virtual std::optional<double> DoneShare() const { return std::nullopt; }
    // The case of the last Prepare with calculated values, object status and status texts filled
    // in; the same objects and variables in the same order. After `failed`, what was found so far.
    virtual const CaseData& Results() const = 0;
};

}  // namespace fixtop::casehost
