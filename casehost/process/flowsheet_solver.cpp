// SPDX-License-Identifier: Apache-2.0
#include "process/flowsheet_solver.h"

#include <cmath>
#include <string>

#include "process/feed_state.h"
#include "process/recycle.h"

namespace fixtop::casehost::process {
namespace {

constexpr double kEnergyMatch = 1e-6;

bool Leave(UnitNode& unit, ObjectStatus status, const std::string& text) {
    unit.status = status;
    unit.text = unit.name + ": " + text;
    unit.results.clear();
    return false;
}

const StreamNode* UnsolvedFeed(const Flowsheet& sheet, const UnitNode& unit) {
    for (int feed : unit.feeds) {
        if (!sheet.streams[feed].Solved()) return &sheet.streams[feed];
    }
    // An energy stream that another unit makes is a feed too.
    for (int energy : unit.energy_in) {
        const StreamNode& stream = sheet.streams[energy];
        if (stream.maker != kNone && !stream.Solved()) return &stream;
    }
    return nullptr;
}

// Heat or power that is known before the unit is solved, positive into it.
double KnownEnergy(const Flowsheet& sheet, const UnitNode& unit) {
    if (!unit.energy_in.empty()) {
        const StreamNode& stream = sheet.streams[unit.energy_in.front()];
        return stream.maker != kNone ? stream.heat_flow : stream.given.heat_flow;
    }
    if (unit.energy_out.empty()) return kEmpty;
    const double given = sheet.streams[unit.energy_out.front()].given.heat_flow;
    return given == kEmpty ? kEmpty : -given;
}

UnitInput ReadInput(const Flowsheet& sheet, const UnitNode& unit) {
    UnitInput input;
    for (int feed : unit.feeds) input.feeds.push_back(*sheet.streams[feed].state);
    for (int product : unit.products) {
        const StreamGiven& given = sheet.streams[product].given;
        input.products.push_back({given.temperature_C, given.pressure_kPa, given.vapour_fraction});
    }
    input.given = unit.given;
    input.energy = KnownEnergy(sheet, unit);
    return input;
}

void WriteOutput(Flowsheet& sheet, UnitNode& unit, UnitOutput output) {
    for (std::size_t i = 0; i < unit.products.size(); ++i) {
        sheet.streams[unit.products[i]].state = std::move(output.products[i]);
    }
    for (int energy : unit.energy_in) sheet.streams[energy].heat_flow = output.energy;
    for (int energy : unit.energy_out) sheet.streams[energy].heat_flow = -output.energy;
    unit.results = std::move(output.results);
    unit.status = output.warning.empty() ? ObjectStatus::ok : ObjectStatus::warning;
    unit.text = output.warning.empty() ? "" : unit.name + ": " + output.warning;
}

void Mark(StreamNode& stream, ObjectStatus status, const std::string& text) {
    stream.status = status;
    stream.text = text.empty() ? "" : "stream " + stream.name + ": " + text;
}

}  // namespace

bool SolveUnit(Flowsheet& sheet, int index, const Thermo& thermo) {
    UnitNode& unit = sheet.units[index];
    for (int product : unit.products) sheet.streams[product].status = ObjectStatus::not_solved;
    if (!unit.problem.empty()) return Leave(unit, ObjectStatus::error, unit.problem);
    if (const StreamNode* feed = UnsolvedFeed(sheet, unit)) {
        return Leave(unit, ObjectStatus::not_solved, "stream " + feed->name + " is not solved");
    }
    if (unit.Link()) {
        sheet.streams[unit.products[0]].state = sheet.streams[unit.feeds[0]].state;
        unit.status = ObjectStatus::ok;
        unit.text.clear();
        return true;
    }
    if (!unit.model) {
        return Leave(unit, ObjectStatus::not_solved,
                     "a " + unit.object->type + " has no steady-state model");
    }
    try {
        WriteOutput(sheet, unit, unit.model->solve(thermo, ReadInput(sheet, unit)));
        return true;
    } catch (const UnderSpecified& missing) {
        return Leave(unit, ObjectStatus::under_specified, missing.what());
    } catch (const ProcessError& error) {
        return Leave(unit, ObjectStatus::error, error.what());
    }
}

FlowsheetSolver::FlowsheetSolver(Flowsheet& sheet, const Thermo& thermo)
    : sheet_(sheet), thermo_(thermo), groups_(FindSolveOrder(sheet)) {
    SolveFeeds();
    if (Finished()) FinishStreams();
}

FlowsheetSolver::~FlowsheetSolver() = default;

void FlowsheetSolver::SolveFeeds() {
    for (StreamNode& stream : sheet_.streams) {
        if (stream.maker != kNone) continue;
        if (stream.energy) {
            stream.heat_flow = stream.given.heat_flow;
            continue;
        }
        try {
            FeedState feed = SolveFeed(thermo_, stream.given);
            stream.state = std::move(feed.state);
            bool fine = feed.warning.empty();
            Mark(stream, fine ? ObjectStatus::ok : ObjectStatus::warning, feed.warning);
        } catch (const UnderSpecified& missing) {
            Mark(stream, ObjectStatus::under_specified, missing.what());
        } catch (const ProcessError& error) {
            Mark(stream, ObjectStatus::error, error.what());
        }
    }
}

bool FlowsheetSolver::Step() {
    if (Finished()) return false;
    const SolveGroup& group = groups_[next_group_];
    if (group.tears.empty()) {
        SolveUnit(sheet_, group.units[0], thermo_);
        ++next_group_;
    } else {
        if (!recycle_) recycle_ = std::make_unique<Recycle>(sheet_, group, thermo_);
        if (recycle_->Pass() != Recycle::Outcome::running) {
            recycle_.reset();
            ++next_group_;
        }
    }
    if (Finished()) FinishStreams();
    return !Finished();
}

// Streams that a unit makes: solved with it, and then held against what stands specified in them.
void FlowsheetSolver::FinishStreams() {
    for (StreamNode& stream : sheet_.streams) {
        const bool made = stream.maker != kNone;
        if (stream.energy) {
            double given = stream.given.heat_flow, found = stream.heat_flow;
            if (!stream.Solved()) {
                Mark(stream, ObjectStatus::not_solved, "heat flow is not known");
            } else if (given != kEmpty &&
                       std::abs(given - found) > kEnergyMatch * std::abs(found)) {
                Mark(stream, ObjectStatus::error,
                     "specified heat flow " + FormatNumber(given) +
                         " kJ/h differs from calculated " + FormatNumber(found) + " kJ/h");
            } else {
                Mark(stream, ObjectStatus::ok, "");
            }
        } else if (made && !stream.Solved()) {
            Mark(stream, ObjectStatus::not_solved,
                 sheet_.units[stream.maker].name + " is not solved");
        } else if (made) {
            std::string text = Contradiction(thermo_, stream.given, *stream.state);
            Mark(stream, text.empty() ? ObjectStatus::ok : ObjectStatus::error, text);
        }
    }
}

}  // namespace fixtop::casehost::process
