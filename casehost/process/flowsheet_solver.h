// SPDX-License-Identifier: Apache-2.0
#pragma once

// Solves a flowsheet in steps: one step is one unit operation or one pass through a recycle.
// Between steps the caller may do anything else, or drop the solver to stop.
//
// Sequential modular: units in the order of FindSolveOrder. A recycle is torn; its tear streams are
// taken over from pass to pass, every third pass by the bounded secant of J. H. Wegstein (Comm. ACM
// 1 (6), 1958, p. 9) on each component flow, the pressure and the molar enthalpy. It has converged
// when no tear variable changes by more than 1e-12 of its scale, or 1e-10 when it gets no better.
//
// What can't be solved gets a status and a text; what depends on it is left unsolved.

#include <memory>
#include <vector>

#include "process/flowsheet.h"
#include "process/solve_order.h"

namespace fixtop::casehost::process {

class Recycle;

class FlowsheetSolver {
 public:
    // Both have to outlive the solver.
    FlowsheetSolver(Flowsheet& sheet, const Thermo& thermo);
    ~FlowsheetSolver();

    // Does one step; false when nothing is left to do.
    bool Step();
    bool Finished() const { return next_group_ == groups_.size(); }
    std::size_t StepsLeft() const { return groups_.size() - next_group_; }  // at least
    // The next step is a pass through a recycle that has begun.
    bool IsInRecycle() const { return recycle_ != nullptr; }

 private:
    void SolveFeeds();
    void FinishStreams();

    Flowsheet& sheet_;
    const Thermo& thermo_;
    std::vector<SolveGroup> groups_;
    std::size_t next_group_ = 0;
    std::unique_ptr<Recycle> recycle_;  // while the next group is a recycle under way
};

// Solves one unit from the states of its feeds; sets its products, status and text. False when it
// has no result.
bool SolveUnit(Flowsheet& sheet, int unit, const Thermo& thermo);

}  // namespace fixtop::casehost::process
