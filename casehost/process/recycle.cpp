// SPDX-License-Identifier: Apache-2.0
#include "process/recycle.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "process/flowsheet_solver.h"

namespace fixtop::casehost::process {
namespace {

constexpr int kMostPasses = 2000;
constexpr double kTightChange = 1e-12;
constexpr double kEnoughChange = 1e-10;
constexpr int kPatience = 6;            // passes without gain before 1e-10 is enough
constexpr double kStrongest = -1000.0;  // bound of Wegstein's q; 0 is plain substitution

}  // namespace

Recycle::Recycle(Flowsheet& sheet, const SolveGroup& group, const Thermo& thermo)
    : sheet_(sheet), group_(group), thermo_(thermo) {
    for (int tear : group_.tears) Guess(tear);
}

// A first guess looks like a feed of the group. A taker with other feeds starts without flow, which
// is the state of a plant before its recycle fills; others need a flow to work on.
void Recycle::Guess(int tear) {
    StreamNode& stream = sheet_.streams[tear];
    if (stream.energy) {
        stream.heat_flow = 0;
        return;
    }
    for (int unit : group_.units) {
        for (int feed : sheet_.units[unit].feeds) {
            bool torn = std::count(group_.tears.begin(), group_.tears.end(), feed) > 0;
            if (torn || !sheet_.streams[feed].state) continue;
            stream.state = sheet_.streams[feed].state;
            const UnitModel* model = sheet_.units[stream.taker].model;
            if (model && model->most_feeds > 2) stream.state->molar_flow = 0;
            return;
        }
    }
}

Recycle::Variables Recycle::Read(int tear) const {
    const StreamNode& stream = sheet_.streams[tear];
    if (stream.energy) return {{stream.heat_flow}, {std::max(std::abs(stream.heat_flow), 1e-6)}};
    const MaterialState& state = *stream.state;
    Variables variables;
    for (double fraction : state.composition) {
        variables.values.push_back(fraction * state.molar_flow);
        variables.scales.push_back(std::max(state.molar_flow, 1e-12));
    }
    const FlashState& flash = state.flash;
    variables.values.insert(variables.values.end(), {flash.pressure_kPa, flash.molar_enthalpy});
    variables.scales.insert(variables.scales.end(),
                            {flash.pressure_kPa, std::max(std::abs(flash.molar_enthalpy),
                                                          kGasConstant * flash.temperature_K)});
    return variables;
}

void Recycle::Write(int tear, const std::vector<double>& values) {
    StreamNode& stream = sheet_.streams[tear];
    if (stream.energy) {
        stream.heat_flow = values[0];
        return;
    }
    MaterialState state = *stream.state;
    const std::size_t count = state.composition.size();
    double flow = std::accumulate(values.begin(), values.begin() + count, 0.0);
    state.molar_flow = flow;
    for (std::size_t i = 0; i < count && flow > 0; ++i) state.composition[i] = values[i] / flow;
    try {
        state.flash = thermo_.FlashPH(state.composition, values[count], values[count + 1],
                                      state.flash.temperature_K);
        stream.state = std::move(state);
    } catch (const ProcessError&) {
        // An extrapolation beyond all states: plain substitution goes on from what was made.
    }
}

std::vector<double> Recycle::Accelerated(std::size_t tear_number, const Variables& made) const {
    const Variables& x = assumed_[tear_number];
    const Variables& last_x = last_assumed_[tear_number];
    const Variables& last_g = last_made_[tear_number];
    std::vector<double> next = made.values;
    const bool energy = sheet_.streams[group_.tears[tear_number]].energy;
    for (std::size_t i = 0; i < next.size(); ++i) {
        double step = x.values[i] - last_x.values[i];
        if (std::abs(step) <= 1e-11 * made.scales[i]) continue;
        double slope = (made.values[i] - last_g.values[i]) / step;
        double q = std::clamp(slope / (slope - 1), kStrongest, 0.0);
        double value = q * x.values[i] + (1 - q) * made.values[i];
        const bool may_fall_below_zero = energy || i + 1 == next.size();
        if (std::isfinite(value) && (may_fall_below_zero || value > 0)) next[i] = value;
    }
    return next;
}

Recycle::Outcome Recycle::Pass() {
    for (int tear : group_.tears) {
        if (!sheet_.streams[tear].Solved()) return Fail("no feed of the recycle is solved");
    }
    assumed_.clear();
    for (int tear : group_.tears) assumed_.push_back(Read(tear));
    ++passes_;
    bool solved = true;
    for (int unit : group_.units) solved = SolveUnit(sheet_, unit, thermo_) && solved;
    if (!solved) return Fail("the recycle is not solved");

    std::vector<Variables> made;
    double change = 0;
    for (std::size_t t = 0; t < group_.tears.size(); ++t) {
        made.push_back(Read(group_.tears[t]));
        for (std::size_t i = 0; i < made[t].values.size(); ++i) {
            double difference = std::abs(made[t].values[i] - assumed_[t].values[i]);
            change = std::max(change, difference / made[t].scales[i]);
        }
    }
    passes_without_gain_ = change < best_change_ ? 0 : passes_without_gain_ + 1;
    best_change_ = std::min(best_change_, change);
    if (change <= kTightChange || (change <= kEnoughChange && passes_without_gain_ >= kPatience)) {
        return Outcome::converged;
    }
    if (passes_ == kMostPasses) {
        sheet_.units[group_.units[0]].status = ObjectStatus::error;
        return Fail("the recycle did not converge in " + std::to_string(kMostPasses) + " passes");
    }
    if (passes_ % 3 == 0) {
        for (std::size_t t = 0; t < group_.tears.size(); ++t) {
            std::vector<double> next = Accelerated(t, made[t]);
            if (next != made[t].values) Write(group_.tears[t], next);
        }
    }
    last_assumed_ = std::move(assumed_);
    last_made_ = std::move(made);
    return Outcome::running;
}

Recycle::Outcome Recycle::Fail(const std::string& text) {
    // The units that failed by themselves keep their own texts; the others depend on them.
    for (int unit : group_.units) {
        UnitNode& node = sheet_.units[unit];
        node.results.clear();
        bool own =
            node.status == ObjectStatus::error || node.status == ObjectStatus::under_specified;
        if (!own) node.status = ObjectStatus::not_solved;
        if (!own || node.text.empty()) node.text = node.name + ": " + text;
        for (int product : node.products) sheet_.streams[product].state.reset();
        for (int energy : node.energy_out) sheet_.streams[energy].heat_flow = kEmpty;
        for (int energy : node.energy_in) {
            StreamNode& stream = sheet_.streams[energy];
            stream.heat_flow = stream.maker == kNone ? stream.given.heat_flow : kEmpty;
        }
    }
    return Outcome::failed;
}

}  // namespace fixtop::casehost::process
