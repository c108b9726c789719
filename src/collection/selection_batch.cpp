// SPDX-License-Identifier: Apache-2.0
#include "collection/selection_batch.h"

#include <utility>

#include "diagnostics/memory_guard.h"

namespace fixtop {

namespace {

constexpr int kSolverService = 1;
constexpr char kSolvesOnStore[] = "autosolve";
constexpr char kWaits[] = "wait_for_solve";

}  // namespace

SelectionBatch::SelectionBatch(FIEntry* top) : top_(Ref<FIEntry>::Share(top)) {
    void* service = nullptr;
    if (!top_ || !top_->QueryService(kSolverService, &service)) return;
    solver_ = static_cast<FISolver*>(service);
    if (IsOn(kSolvesOnStore)) {
        Switch(false);
    } else {
        solver_ = nullptr;
    }
}

SelectionBatch::~SelectionBatch() {
    if (solver_) memory::Contain([this] { Switch(true); });
}

bool SelectionBatch::IsOn(const char* name) const {
    FIValue on;
    solver_->GetAttribute(FIValue(name), on);
    return on.Kind() == FIValue::kInt && on.AsInt() != 0;
}

void SelectionBatch::Switch(bool on) const {
    FIValue refusal;
    solver_->SetAttribute(FIValue(kSolvesOnStore), FIValue::OfInt(on ? 1 : 0), refusal);
}

// Who waits for the solve of a store waits for this one.
void SelectionBatch::Solve() {
    if (!solver_) return;
    if (IsOn(kWaits)) {
        FIErrorList report;
        solver_->SolveOnceNow(report);
    }
    Switch(true);
    solver_ = nullptr;
}

}  // namespace fixtop
