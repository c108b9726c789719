// SPDX-License-Identifier: Apache-2.0
#include "live/solver_node.h"

#include "live/case.h"

namespace fixtop::casehost {

namespace {

constexpr char kRunningMoniker[] = ":Boolean.302";
constexpr char kReadyMoniker[] = ":Boolean.300";
constexpr char kConsistencyMoniker[] = "ConsistencyVariable";
constexpr char kStopped[] = "the solve was stopped";
// A blocking pass gives up after so many steps; an engine that converges needs far fewer.
constexpr int kBlockingSteps = 10000;

}  // namespace

void SolverNode::SolveTask() {
    if (holding_) return;
    stop_ = false;
    finished_ = false;
    if (phase_ == Phase::solving) return;
    if (OwnerCase().IsRecorded()) {
        if (needs_to_run_) RefuseRecording();
        return;
    }
    if (phase_ == Phase::queued) return;
    phase_ = Phase::queued;
}

// The end is told in the next turn, as that of any solve.
void SolverNode::RefuseRecording() {
    message_ = "the case is a recording and can't be computed again";
    finished_ = true;
    phase_ = Phase::ending;
}

void SolverNode::SolveOnce() {
    if (OwnerCase().IsRecorded() && !holding_) needs_to_run_ = true;
    SolveTask();
    for (int step = 0; step < kBlockingSteps && phase_ != Phase::idle && !stop_; ++step) Turn();
}

double SolverNode::GetRealValue(const host::VarDescription& variable) {
    const host::Text moniker = variable.GetMoniker();
    if (moniker == kRunningMoniker) return IsSolving() ? host::FALSEVALUE : host::TRUEVALUE;
    if (moniker == kReadyMoniker) return holding_ ? host::TRUEVALUE : host::FALSEVALUE;
    return ReadReal(variable);
}

host::Text SolverNode::GetTextValue(const host::VarDescription& variable) {
    if (!(variable.GetMoniker() == kConsistencyMoniker)) return ReadText(variable);
    return message_.empty() ? host::Text("Unknown.0") : host::Text(Inconsistency());
}

std::string SolverNode::Inconsistency() {
    Node* culprit = OwnerCase().FirstInError();
    return culprit ? OwnerCase().MonikerOf(*culprit).substr(1) : step::kSolver;
}

void SolverNode::Turn() {
    if (Pending() || IsSolving()) {
        stop_ |= stop_button_ && stop_button_();
        if (stop_) return End(false, kStopped);
    }
    switch (phase_) {
        case Phase::idle:
            finished_ = false;
            return;
        case Phase::queued:
            return Begin();
        case Phase::solving:
            Advance();
            return;
        case Phase::ending:
            // A recorded case: nothing was computed, only the end is told.
            phase_ = Phase::idle;
            OwnerCase().Notify(&host::IModelCallback::SimulationStep);
            OwnerCase().Notify(&host::IModelCallback::SimulationStopped);
            return;
    }
}

void SolverNode::Begin() {
    phase_ = Phase::solving;
    turn_ = 0;
    prepared_ = false;
    message_.clear();
    OwnerCase().Notify(&host::IModelCallback::SimulationStarted);
}

void SolverNode::Advance() {
    if (holding_) return End(false, kStopped);
    if (!engine_) return End(false, "no engine computes this case");
    const SolveEngine::Outcome outcome = Compute();
    ++turn_;
    if (outcome.progress == SolveEngine::Progress::failed) {
        OwnerCase().ApplyResults(engine_->Results());
        return End(false, outcome.message);
    }
    computed_ = outcome.progress == SolveEngine::Progress::done;
    if (!computed_ || turn_ < OwnerCase().SolveTurns()) {
        return OwnerCase().Notify(&host::IModelCallback::SimulationStep);
    }
    OwnerCase().ApplyResults(engine_->Results());
    End(true, "");
}

std::optional<double> SolverNode::DoneShare() const {
    const bool computes = phase_ == Phase::solving && prepared_ && !changed_;
    return computes ? engine_->DoneShare() : std::nullopt;
}

SolveEngine::Outcome SolverNode::Compute() {
    if (!prepared_ || changed_) {
        changed_ = false;
        prepared_ = true;
        computed_ = false;
        turn_ = 0;
        SolveEngine::Outcome outcome = engine_->Prepare(OwnerCase().ToData());
        if (outcome.progress != SolveEngine::Progress::running) return outcome;
    }
    if (computed_) return {SolveEngine::Progress::done, ""};
    return engine_->Step(turn_);
}

// The end is told as a step, in which `Finished` can be seen, and as a stop.
void SolverNode::End(bool success, std::string message) {
    phase_ = Phase::idle;
    finished_ = true;
    needs_to_run_ = !success;
    message_ = success ? "" : message.empty() ? "the solve failed" : std::move(message);
    OwnerCase().Notify(&host::IModelCallback::SimulationStep);
    OwnerCase().Notify(&host::IModelCallback::SimulationStopped);
}

}  // namespace fixtop::casehost
