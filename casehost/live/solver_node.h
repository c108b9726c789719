// SPDX-License-Identifier: Apache-2.0
#pragma once

// SolverNode: the solver of a case as clients see it. A solve is queued by SolveTask, begins in
// the next turn of the host's loop, works a step a turn and ends; the computation is an engine's.
//
// While it holds nothing starts: SolveTask does nothing, and a solve under way is given up at the
// next turn. A store during a solve begins it anew. A recorded case can't be computed again: once
// it was changed its SolveTask ends at once, without success, and its SolveOnce does so always.

#include <functional>
#include <optional>

#include "casehost/solve_engine.h"
#include "fixtop/host/simulation_case.h"
#include "live/node.h"

namespace fixtop::casehost {

class SolverNode final : public NodeOf<host::FlowSheetSolver> {
 public:
    using NodeOf::NodeOf;

    void Holding(bool hold) override {
        holding_ = hold;
        if (hold) pause_requested_ = false;
    }
    bool NeedsToRun() override { return needs_to_run_; }
    bool IsSolving() override { return phase_ == Phase::solving; }
    void SolveTask() override;
    void SolveOnce() override;
    bool IsHolding() override { return holding_; }
    bool Stop() override { return stop_; }
    bool Busy() override { return phase_ == Phase::solving || phase_ == Phase::ending; }
    bool Pending() override { return phase_ == Phase::queued; }
    bool PauseRequested() override { return pause_requested_; }
    bool Finished() override { return finished_; }
    double GetRealValue(const host::VarDescription& variable) override;
    host::Text GetTextValue(const host::VarDescription& variable) override;

    // The host's user presses the buttons.
    void RequestStop() { stop_ = true; }
    // Asked at every turn of a solve; true presses the button.
    void SetStopButton(std::function<bool()> pressed) { stop_button_ = std::move(pressed); }
    void RequestPause(bool on) { pause_requested_ = on; }

    // A value or the structure of the case changed: what was computed no longer holds.
    void CaseChanged() {
        needs_to_run_ = true;
        changed_ = true;
    }
    void SetNeedsToRun(bool needs) { needs_to_run_ = needs; }
    void SetEngine(std::unique_ptr<SolveEngine> engine) { engine_ = std::move(engine); }
    // One turn of the host's loop.
    void Turn();
    // How much of the solve under way is done, from 0 to 1; nothing while nobody knows.
    std::optional<double> DoneShare() const;
    // Why the last solve did not complete; empty when it did.
    const std::string& Message() const { return message_; }

 private:
    enum class Phase { idle, queued, solving, ending };

    void RefuseRecording();
    void Begin();
    void Advance();
    SolveEngine::Outcome Compute();
    void End(bool success, std::string message);
    std::string Inconsistency();

    std::unique_ptr<SolveEngine> engine_;
    Phase phase_ = Phase::idle;
    int turn_ = 0;
    bool prepared_ = false;
    bool computed_ = false;  // the engine is done with what was prepared
    bool holding_ = false;
    bool needs_to_run_ = false;
    bool stop_ = false;
    bool pause_requested_ = false;
    bool finished_ = false;
    std::function<bool()> stop_button_;
    bool changed_ = false;  // since the solve under way was prepared
    std::string message_;
};

}  // namespace fixtop::casehost
