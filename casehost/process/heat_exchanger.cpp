// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "casehost/unit_op_names.h"
#include "process/roots.h"
#include "process/unit_inputs.h"

namespace fixtop::casehost::process {
namespace {

namespace cn = casehost::names;

struct SideNames {
    PressureNames pressure;
    const char* inlet_temperature;
    const char* outlet_temperature;
    const char* temperature_words;
    const char* stream_words;
    const char* delta_t;
};

constexpr SideNames kSides[2] = {
    {{cn::kTubePressureDrop, "Tube Outlet Pressure", "tube side "},
     "Tube Inlet Temperature",
     "Tube Outlet Temperature",
     "tube outlet temperature",
     "temperature of the tube side product",
     "Tube Side Delta T"},
    {{cn::kShellPressureDrop, "Shell Outlet Pressure", "shell side "},
     "Shell Inlet Temperature",
     "Shell Outlet Temperature",
     "shell outlet temperature",
     "temperature of the shell side product",
     "Shell Side Delta T"},
};

class Exchange {
 public:
    Exchange(const Thermo& thermo, const UnitInput& input)
        : thermo_(thermo),
          feeds_{input.feeds[0], input.feeds[1]},
          hot_(feeds_[1].Temperature_C() > feeds_[0].Temperature_C() ? 1 : 0) {
        for (std::size_t side : {0, 1}) {
            pressure_kPa_[side] =
                ProductPressure(input, feeds_[side].Pressure(), side, kSides[side].pressure);
        }
    }

    std::size_t Hot() const { return hot_; }
    const MaterialState& Feed(std::size_t side) const { return feeds_[side]; }

    // The side's outlet when `duty` goes from the hot to the cold side.
    MaterialState Outlet(std::size_t side, double duty) const {
        const MaterialState& feed = feeds_[side];
        double change = MolarChange(side == hot_ ? -duty : duty, feed.molar_flow);
        return AtEnthalpy(thermo_, feed, pressure_kPa_[side], feed.flash.molar_enthalpy + change);
    }

    // The duty that brings the side's outlet to a temperature.
    double DutyTo(std::size_t side, double temperature_K) const {
        const MaterialState& feed = feeds_[side];
        FlashState outlet = thermo_.FlashPT(feed.composition, pressure_kPa_[side], temperature_K);
        double gain = feed.molar_flow * (outlet.molar_enthalpy - feed.flash.molar_enthalpy);
        return side == hot_ ? -gain : gain;
    }

    // The differences hot inlet - cold outlet and hot outlet - cold inlet.
    std::pair<double, double> Ends(double hot_outlet_K, double cold_outlet_K) const {
        return {feeds_[hot_].flash.temperature_K - cold_outlet_K,
                hot_outlet_K - feeds_[1 - hot_].flash.temperature_K};
    }

    double DutyFromUa(double ua) const {
        const std::size_t cold = 1 - hot_;
        double most = std::min(DutyTo(hot_, feeds_[cold].flash.temperature_K),
                               DutyTo(cold, feeds_[hot_].flash.temperature_K));
        if (!(most > 0) || ua <= 0) return 0;
        double last_duty = std::numeric_limits<double>::quiet_NaN(), last_value = last_duty;
        auto residual = [&](double duty) {
            auto [a, b] = Ends(Outlet(hot_, duty).flash.temperature_K,
                               Outlet(cold, duty).flash.temperature_K);
            double mean = a > 0 && b > 0 ? LogMeanDifference(a, b) : 0;
            double value = duty - ua * mean;
            double slope = (value - last_value) / (duty - last_duty);
            last_duty = duty;
            last_value = value;
            return std::pair(value, slope);
        };
        return SolveRising(residual, {0, most}, 0.5 * most, 1e-13);
    }

 private:
    const Thermo& thermo_;
    MaterialState feeds_[2];
    std::size_t hot_;
    double pressure_kPa_[2];
};

double FindDuty(const Exchange& exchange, const UnitInput& input) {
    std::vector<Choice> choices = {{"duty", Given(input, cn::kDuty)},
                                   {"UA", Given(input, cn::kUA)}};
    for (std::size_t side : {0, 1}) {
        choices.push_back(
            {kSides[side].temperature_words, Given(input, kSides[side].outlet_temperature)});
        choices.push_back({kSides[side].stream_words, input.products[side].temperature_C});
    }
    std::size_t chosen = OneOf(choices, "duty, UA or an outlet temperature");
    double value = choices[chosen].value;
    if (chosen == 0) return value;
    if (chosen == 1) return exchange.DutyFromUa(value);
    return exchange.DutyTo(chosen < 4 ? 0 : 1, value + kZeroCelsius_K);
}

}  // namespace

double LogMeanDifference(double first, double second) {
    double excess = (first - second) / second;
    if (std::abs(excess) < 1e-8) return second * (1 + 0.5 * excess);
    return second * excess / std::log1p(excess);
}

bool IsSideResult(std::string_view name) {
    return std::ranges::any_of(kSides, [&](const SideNames& side) {
        return name == side.pressure.drop || name == side.pressure.product ||
               name == side.inlet_temperature || name == side.outlet_temperature ||
               name == side.delta_t;
    });
}

UnitOutput SolveHeatExchanger(const Thermo& thermo, const UnitInput& input) {
    const Exchange exchange(thermo, input);
    const double duty = FindDuty(exchange, input);
    UnitOutput output;
    output.products = {exchange.Outlet(0, duty), exchange.Outlet(1, duty)};
    const std::size_t hot = exchange.Hot();
    auto [a, b] = exchange.Ends(output.products[hot].flash.temperature_K,
                                output.products[1 - hot].flash.temperature_K);
    output.results[cn::kDuty] = {duty};
    output.results[cn::kMinimumApproach] = {std::min(a, b)};
    bool crossed = !(a > 0 && b > 0);
    if (crossed && duty != 0) output.warning = "temperature cross";
    double mean = crossed ? kEmpty : LogMeanDifference(a, b);
    output.results[cn::kLmtd] = {mean};
    const double given_ua = Given(input, cn::kUA);
    double calculated_ua = crossed ? kEmpty : duty / mean;
    output.results[cn::kUA] = {given_ua != kEmpty ? given_ua : calculated_ua};
    for (std::size_t side : {0, 1}) {
        const MaterialState& feed = exchange.Feed(side);
        const MaterialState& product = output.products[side];
        output.results[kSides[side].pressure.drop] = {feed.Pressure() - product.Pressure()};
        output.results[kSides[side].pressure.product] = {product.Pressure()};
        output.results[kSides[side].inlet_temperature] = {feed.Temperature_C()};
        output.results[kSides[side].outlet_temperature] = {product.Temperature_C()};
        output.results[kSides[side].delta_t] = {product.Temperature_C() - feed.Temperature_C()};
    }
    return output;
}

}  // namespace fixtop::casehost::process
