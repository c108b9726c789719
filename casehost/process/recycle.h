// SPDX-License-Identifier: Apache-2.0
#pragma once

// One group of units that depend on each other in a circle, under way.

#include <limits>
#include <string>
#include <vector>

#include "process/flowsheet.h"
#include "process/solve_order.h"

namespace fixtop::casehost::process {

class Recycle {
 public:
    enum class Outcome { running, converged, failed };

    Recycle(Flowsheet& sheet, const SolveGroup& group, const Thermo& thermo);

    // One pass through the group. `failed`: a unit has no result or the passes are used up; all
    // results of the group are gone then and the texts say why.
    Outcome Pass();

 private:
    // The variables of one tear stream, each with the size against which a change counts.
    struct Variables {
        std::vector<double> values;
        std::vector<double> scales;
    };

    void Guess(int tear);
    Variables Read(int tear) const;
    void Write(int tear, const std::vector<double>& values);
    std::vector<double> Accelerated(std::size_t tear_number, const Variables& made) const;
    Outcome Fail(const std::string& text);

    Flowsheet& sheet_;
    const SolveGroup& group_;
    const Thermo& thermo_;
    int passes_ = 0;
    int passes_without_gain_ = 0;
    double best_change_ = std::numeric_limits<double>::infinity();
    std::vector<Variables> assumed_;       // by tear, of this pass
    std::vector<Variables> last_assumed_;  // of the pass before
    std::vector<Variables> last_made_;
};

}  // namespace fixtop::casehost::process
