// SPDX-License-Identifier: Apache-2.0
#include "process/unit_ops.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "casehost/unit_op_names.h"
#include "process/roots.h"
#include "process/unit_inputs.h"

namespace fixtop::casehost::process {
namespace {

namespace cn = casehost::names;

constexpr PressureNames kSinglePressure{cn::kPressureDrop, cn::kProductPressure};

// What every one-in one-out operation reports.
void AddChanges(UnitOutput& output, const MaterialState& feed) {
    const MaterialState& product = output.products[0];
    output.results[cn::kPressureDrop] = {feed.Pressure() - product.Pressure()};
    output.results[cn::kProductPressure] = {product.Pressure()};
    output.results[cn::kProductTemperature] = {product.Temperature_C()};
    output.results[kDeltaT] = {product.Temperature_C() - feed.Temperature_C()};
}

void CheckRise(double feed_kPa, double product_kPa, double sign) {
    if (sign * (product_kPa - feed_kPa) >= 0) return;
    throw ProcessError("product pressure " + FormatNumber(product_kPa) + " kPa is " +
                       (sign > 0 ? "below" : "above") + " feed pressure " + FormatNumber(feed_kPa) +
                       " kPa");
}

UnitOutput SolveMixer(const Thermo& thermo, const UnitInput& input) {
    UnitOutput output;
    double pressure_kPa = LowestPressure(input.feeds);
    const double assignment = Given(input, cn::kOutletPressureAssignment);
    if (assignment == 0) {
        for (const MaterialState& feed : input.feeds) {
            if (feed.molar_flow > 0 && feed.Pressure() > pressure_kPa * (1 + 1e-9)) {
                output.warning = "feed pressures differ, the lowest is taken";
            }
        }
    }
    output.products = {Combine(thermo, input.feeds, pressure_kPa)};
    return output;
}

UnitOutput SolveTee(const Thermo&, const UnitInput& input) {
    const std::size_t count = input.products.size();
    auto found = input.given.find(cn::kFlowRatio);
    std::vector<double> ratios = found == input.given.end() ? std::vector<double>() : found->second;
    ratios.resize(count, kEmpty);
    auto open = std::find(ratios.begin(), ratios.end(), kEmpty);
    if (std::count(ratios.begin(), ratios.end(), kEmpty) > 1) {
        throw UnderSpecified("all flow ratios but one must be specified");
    }
    double sum = 0;
    for (double ratio : ratios) {
        if (ratio == kEmpty) continue;
        if (ratio < 0) throw ProcessError("flow ratio " + FormatNumber(ratio) + " is below zero");
        sum += ratio;
    }
    bool all_given = open == ratios.end();
    if (all_given ? std::abs(sum - 1) > 1e-9 : sum > 1) {
        throw ProcessError("flow ratios sum to " + FormatNumber(sum) +
                           (all_given ? ", not to 1" : ", above 1"));
    }
    if (!all_given) *open = 1 - sum;

    UnitOutput output;
    for (double ratio : ratios) {
        output.products.push_back(input.feeds[0]);
        output.products.back().molar_flow *= all_given ? ratio / sum : ratio;
    }
    output.results[cn::kFlowRatio] = ratios;
    return output;
}

UnitOutput SolveValve(const Thermo& thermo, const UnitInput& input) {
    const MaterialState& feed = input.feeds[0];
    double pressure_kPa = ProductPressure(input, feed.Pressure(), 0, kSinglePressure);
    CheckRise(feed.Pressure(), pressure_kPa, -1);
    UnitOutput output;
    output.products = {AtEnthalpy(thermo, feed, pressure_kPa, feed.flash.molar_enthalpy)};
    AddChanges(output, feed);
    return output;
}

// Duty as the user counts it: `sign` is -1 where it counts what leaves the unit. Others follow.
std::vector<Choice> DutyChoices(const UnitInput& input, double sign,
                                std::initializer_list<Choice> others) {
    double energy = input.energy == kEmpty ? kEmpty : sign * input.energy;
    std::vector<Choice> choices = {{"duty", Given(input, cn::kDuty)},
                                   {"heat flow of the energy stream", energy}};
    choices.insert(choices.end(), others);
    return choices;
}

template <int sign>
UnitOutput SolveHeating(const Thermo& thermo, const UnitInput& input) {
    const MaterialState& feed = input.feeds[0];
    double pressure_kPa = ProductPressure(input, feed.Pressure(), 0, kSinglePressure);
    const ProductGiven& stream = input.products[0];
    const std::vector<Choice> choices =
        DutyChoices(input, sign,
                    {{"product temperature", Given(input, cn::kProductTemperature)},
                     {"temperature of the product stream", stream.temperature_C},
                     {"vapour fraction of the product stream", stream.vapour_fraction}});
    std::size_t chosen = OneOf(choices, "product temperature or duty");
    const double value = choices[chosen].value;

    UnitOutput output;
    MaterialState product = feed;
    if (chosen < 2) {
        double change = MolarChange(sign * value, feed.molar_flow);
        product = AtEnthalpy(thermo, feed, pressure_kPa, feed.flash.molar_enthalpy + change);
    } else if (chosen < 4) {
        product.flash = thermo.FlashPT(feed.composition, pressure_kPa, value + kZeroCelsius_K);
    } else {
        product.flash = thermo.FlashPV(feed.composition, pressure_kPa, value);
    }
    output.energy = product.HeatFlow() - feed.HeatFlow();
    output.results[cn::kDuty] = {sign * output.energy};
    if (sign * output.energy < 0) output.warning = sign > 0 ? "duty cools" : "duty heats";
    output.products = {std::move(product)};
    AddChanges(output, feed);
    return output;
}

double Efficiency(const UnitInput& input) {
    double percent = Given(input, cn::kAdiabaticEfficiency);
    if (percent == kEmpty) throw UnderSpecified("adiabatic efficiency must be specified");
    if (!(percent > 0 && percent <= 100)) {
        throw ProcessError("adiabatic efficiency " + FormatNumber(percent) +
                           " % is not within 0 and 100");
    }
    return percent / 100;
}

void FinishShaft(UnitOutput& output, const UnitInput& input, double sign) {
    const MaterialState& feed = input.feeds[0];
    output.energy = output.products[0].HeatFlow() - feed.HeatFlow();
    output.results[cn::kDuty] = {sign * output.energy};
    output.results[cn::kAdiabaticEfficiency] = {Given(input, cn::kAdiabaticEfficiency)};
    AddChanges(output, feed);
}

UnitOutput SolvePump(const Thermo& thermo, const UnitInput& input) {
    const MaterialState& feed = input.feeds[0];
    double efficiency = Efficiency(input);
    double pressure_kPa = ProductPressure(input, feed.Pressure(), 0, kSinglePressure);
    CheckRise(feed.Pressure(), pressure_kPa, 1);
    double work = thermo.LiquidVolume(feed.composition) * (pressure_kPa - feed.Pressure());
    UnitOutput output;
    output.products = {
        AtEnthalpy(thermo, feed, pressure_kPa, feed.flash.molar_enthalpy + work / efficiency)};
    if (feed.flash.split.vapour > 0) output.warning = "the feed holds vapour";
    FinishShaft(output, input, 1);
    return output;
}

constexpr int kMostDoublings = 14;  // a pressure ratio of 16384

// The pressure at which the feed, at constant entropy, has changed its enthalpy by `change`.
double IsentropicPressure(const Thermo& thermo, const MaterialState& feed, double change) {
    const FlashState& from = feed.flash;
    auto residual = [&](double log_pressure) {
        FlashState to = thermo.FlashPS(feed.composition, std::exp(log_pressure), from.molar_entropy,
                                       from.temperature_K);
        // (dh/d ln P) at constant entropy is P v, with v of the ideal gas part.
        return std::pair(to.molar_enthalpy - from.molar_enthalpy - change,
                         to.split.vapour * kGasConstant * to.temperature_K);
    };
    // The far end of the bracket is sought outwards: far from the feed there may be no state.
    const double sign = change > 0 ? 1 : -1;
    double near_end = std::log(from.pressure_kPa), far_end = near_end;
    for (int doublings = 0; sign * residual(far_end).first < 0; ++doublings) {
        if (doublings == kMostDoublings)
            throw ProcessError("no product pressure takes up the power");
        near_end = far_end;
        far_end += sign * std::log(2.0);
    }
    Bracket bracket{std::min(near_end, far_end), std::max(near_end, far_end)};
    return std::exp(SolveRising(residual, bracket, 0.5 * (near_end + far_end), 1e-14));
}

// Compressor (`sign` 1) and expander (-1): the ideal change of enthalpy at constant entropy is
// divided or multiplied by the efficiency.
template <int sign>
UnitOutput SolveGasMachine(const Thermo& thermo, const UnitInput& input) {
    const MaterialState& feed = input.feeds[0];
    const double factor = std::pow(Efficiency(input), -sign);  // real change over ideal change
    const std::vector<Choice> power =
        DutyChoices(input, sign,
                    {{"product pressure", Given(input, cn::kPressureDrop)},
                     {"product pressure", Given(input, cn::kProductPressure)},
                     {"product pressure", input.products[0].pressure_kPa}});
    double change = 0, pressure_kPa = 0;
    if (power[0].value != kEmpty || power[1].value != kEmpty) {
        double work = power[OneOf(power, "duty")].value;
        if (work < 0) throw ProcessError("duty " + FormatNumber(work) + " kJ/h is below zero");
        change = MolarChange(sign * work, feed.molar_flow);
        pressure_kPa =
            change == 0 ? feed.Pressure() : IsentropicPressure(thermo, feed, change / factor);
    } else {
        pressure_kPa = ProductPressure(input, feed.Pressure(), 0, kSinglePressure);
        CheckRise(feed.Pressure(), pressure_kPa, sign);
        FlashState ideal = thermo.FlashPS(feed.composition, pressure_kPa, feed.flash.molar_entropy,
                                          feed.flash.temperature_K);
        change = factor * (ideal.molar_enthalpy - feed.flash.molar_enthalpy);
    }
    UnitOutput output;
    output.products = {AtEnthalpy(thermo, feed, pressure_kPa, feed.flash.molar_enthalpy + change)};
    if (sign > 0 && feed.flash.split.liquid > 0) output.warning = "the feed holds liquid";
    FinishShaft(output, input, sign);
    return output;
}

// One phase of a vessel as a stream. An absent phase is a stream without flow that has the
// composition of the first bubble or drop.
MaterialState PhaseStream(const Thermo& thermo, const MaterialState& whole, bool vapour) {
    const FlashState& flash = whole.flash;
    MaterialState phase;
    phase.molar_flow = whole.molar_flow * (vapour ? flash.split.vapour : flash.split.liquid);
    phase.composition = vapour ? flash.vapour : flash.liquid;
    if (phase.composition.empty()) {
        phase.composition = whole.composition;
        double sum = 0;
        for (std::size_t i = 0; i < phase.composition.size(); ++i) {
            double k = thermo.KValue(i, flash.temperature_K, flash.pressure_kPa);
            sum += phase.composition[i] *= vapour ? k : 1 / k;
        }
        for (double& fraction : phase.composition) fraction /= sum;
    }
    phase.flash.temperature_K = flash.temperature_K;
    phase.flash.pressure_kPa = flash.pressure_kPa;
    phase.flash.split = vapour ? PhaseSplit{1, 0} : PhaseSplit{0, 1};
    (vapour ? phase.flash.vapour : phase.flash.liquid) = phase.composition;
    thermo.FillEnergies(phase.flash);
    return phase;
}

UnitOutput SolveSeparator(const Thermo& thermo, const UnitInput& input) {
    double drop = Given(input, cn::kPressureDrop);
    double feed_kPa = LowestPressure(input.feeds), pressure_kPa = feed_kPa;
    const double product = Given(input, cn::kProductPressure);
    const double stream = input.products[0].pressure_kPa;
    if (drop != kEmpty || product != kEmpty || stream != kEmpty) {
        pressure_kPa = ProductPressure(input, feed_kPa, 0, kSinglePressure);
    }
    double feed_heat = 0;
    for (const MaterialState& feed : input.feeds) feed_heat += feed.HeatFlow();

    const std::vector<Choice> choices =
        DutyChoices(input, 1,
                    {{"product temperature", Given(input, cn::kProductTemperature)},
                     {"temperature of the vapour", input.products[0].temperature_C}});
    bool heated = std::ranges::any_of(
        choices, [](double v) { return v != kEmpty; }, &Choice::value);
    MaterialState whole = Combine(thermo, input.feeds, pressure_kPa);
    if (heated) {
        std::size_t chosen = OneOf(choices, "duty");
        double value = choices[chosen].value;
        if (chosen < 2) {
            double change = MolarChange(value, whole.molar_flow);
            whole = AtEnthalpy(thermo, whole, pressure_kPa, whole.flash.molar_enthalpy + change);
        } else {
            whole.flash = thermo.FlashPT(whole.composition, pressure_kPa, value + kZeroCelsius_K);
        }
    }
    UnitOutput output;
    output.energy = whole.HeatFlow() - feed_heat;
    output.products = {PhaseStream(thermo, whole, true), PhaseStream(thermo, whole, false)};
    if (input.products.size() > 2) {
        // The heavy liquid has no flow: there is one liquid only.
        output.products.push_back(output.products[1]);
        output.products.back().molar_flow = 0;
    }
    output.results[cn::kDuty] = {heated ? output.energy : 0.0};
    output.results[cn::kPressureDrop] = {feed_kPa - pressure_kPa};
    output.results[cn::kProductPressure] = {pressure_kPa};
    output.results[cn::kProductTemperature] = {whole.Temperature_C()};
    return output;
}

constexpr std::size_t kMany = 1000;

constexpr UnitModel kModels[] = {
    {words::kMixer, SolveMixer, 1, kMany, 1, 1},
    {words::kTee, SolveTee, 1, 1, 1, kMany},
    {words::kValve, SolveValve, 1, 1, 1, 1},
    {words::kHeater, SolveHeating<1>, 1, 1, 1, 1},
    {words::kCooler, SolveHeating<-1>, 1, 1, 1, 1},
    {words::kPump, SolvePump, 1, 1, 1, 1},
    {words::kCompressor, SolveGasMachine<1>, 1, 1, 1, 1},
    {words::kExpander, SolveGasMachine<-1>, 1, 1, 1, 1},
    {words::kSeparator, SolveSeparator, 1, kMany, 2, 2},
    {words::kTank, SolveSeparator, 1, kMany, 2, 2},
    {words::kThreePhaseSeparator, SolveSeparator, 1, kMany, 2, 3},
    {words::kHeatExchanger, SolveHeatExchanger, 2, 2, 2, 2},
};

constexpr const char* kResults[] = {
    cn::kPressureDrop,
    cn::kProductPressure,
    cn::kProductTemperature,
    cn::kDuty,
    cn::kAdiabaticEfficiency,
    cn::kFlowRatio,
    cn::kUA,
    cn::kLmtd,
    cn::kMinimumApproach,
    kDeltaT,
};

}  // namespace

bool IsUnitResult(std::string_view name) {
    return std::ranges::find(kResults, name) != std::end(kResults) || IsSideResult(name);
}

const UnitModel* FindUnitModel(std::string_view type) {
    auto found = std::ranges::find(kModels, type, &UnitModel::type);
    return found == std::end(kModels) ? nullptr : found;
}

}  // namespace fixtop::casehost::process
