// SPDX-License-Identifier: Apache-2.0
#include "process/process_engine.h"

#include <algorithm>
#include <string>

#include "process/results.h"

namespace fixtop::casehost::process {
namespace {

void OwnSubFlowsheets(FlowsheetData& level) {
    for (ObjectData& object : level.objects) {
        if (!object.sub_flowsheet) continue;
        object.sub_flowsheet = std::make_shared<FlowsheetData>(*object.sub_flowsheet);
        OwnSubFlowsheets(*object.sub_flowsheet);
    }
}

// The first text with a reason of its own, else the first of those that only depend on others.
std::string FirstProblem(const Flowsheet& sheet) {
    std::string dependent;
    auto own_reason = [&](ObjectStatus status, const std::string& text) {
        if (status == ObjectStatus::ok || status == ObjectStatus::warning) return false;
        if (status != ObjectStatus::not_solved) return true;
        if (dependent.empty()) dependent = text;
        return false;
    };
    for (const StreamNode& stream : sheet.streams) {
        if (own_reason(stream.status, stream.text)) return stream.text;
    }
    for (const UnitNode& unit : sheet.units) {
        if (own_reason(unit.status, unit.text)) return unit.text;
    }
    return dependent;
}

}  // namespace

SolveEngine::Outcome ProcessEngine::Prepare(const CaseData& problem) {
    Cancel();
    data_ = problem;
    OwnSubFlowsheets(data_.main);
    sheet_ = BuildFlowsheet(data_);
    thermo_.reset();
    if (data_.recorded) {
        return last_ = {Progress::failed, "a recorded case can't be solved"};
    }
    try {
        thermo_.emplace(data_.compounds);
    } catch (const ProcessError& error) {
        WriteResults(sheet_, nullptr);
        return last_ = {Progress::failed, error.what()};
    }
    solver_ = std::make_unique<FlowsheetSolver>(sheet_, *thermo_);
    const std::size_t turns = static_cast<std::size_t>(std::max(data_.solve_turns, 1));
    steps_ = solver_->StepsLeft();
    steps_per_turn_ = std::max<std::size_t>(1, (steps_ + turns - 1) / turns);
    return last_ = {Progress::running, ""};
}

SolveEngine::Outcome ProcessEngine::Step(int) {
    if (!solver_) return last_;
    for (std::size_t i = 0; i < steps_per_turn_; ++i) {
        if (!solver_->Step()) return Finish();
    }
    return last_;
}

std::optional<double> ProcessEngine::DoneShare() const {
    if (!solver_ || steps_ == 0 || solver_->IsInRecycle()) return std::nullopt;
    return static_cast<double>(steps_ - solver_->StepsLeft()) / static_cast<double>(steps_);
}

SolveEngine::Outcome ProcessEngine::Finish() {
    solver_.reset();
    WriteResults(sheet_, &*thermo_);
    std::string problem = FirstProblem(sheet_);
    return last_ = {problem.empty() ? Progress::done : Progress::failed, problem};
}

void ProcessEngine::Cancel() {
    if (!solver_) return;
    solver_.reset();
    WriteResults(sheet_, &*thermo_);
    last_ = {Progress::failed, "the solve was cancelled"};
}

}  // namespace fixtop::casehost::process
