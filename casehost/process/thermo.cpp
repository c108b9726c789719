// SPDX-License-Identifier: Apache-2.0
#include "process/thermo.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "process/roots.h"

namespace fixtop::casehost::process {
namespace {

constexpr double kWilson = 5.373;

double Sum(const Composition& z, auto&& term) {
    double sum = 0;
    for (std::size_t i = 0; i < z.size(); ++i) {
        if (z[i] != 0) sum += z[i] * term(i);
    }
    return sum;
}

// The sum of z (K-1) / (1 - v + v K) and its slope; `at` answers K of a compound and dK.
std::pair<double, double> SumAndSlope(const Composition& z, double v, auto&& at) {
    std::pair<double, double> result{0, 0};
    for (std::size_t i = 0; i < z.size(); ++i) {
        if (z[i] == 0) continue;
        const auto [k, dk] = at(i);
        double below = 1 - v + v * k;
        result.first += z[i] * (k - 1) / below;
        result.second += z[i] * dk / (below * below);
    }
    return result;
}

double EnthalpyIntegral(const std::vector<double>& cp, double temperature_K) {
    double value = 0;
    for (std::size_t k = cp.size(); k-- > 0;) {
        value = value * temperature_K + cp[k] / static_cast<double>(k + 1);
    }
    return value * temperature_K;
}

double EntropyIntegral(const std::vector<double>& cp, double temperature_K) {
    double value = 0;
    for (std::size_t k = cp.size(); k-- > 1;) {
        value = (value + cp[k] / static_cast<double>(k)) * temperature_K;
    }
    return value + cp[0] * std::log(temperature_K);
}

double RackettVolume(const CompoundData& c) {
    double temperature_K = std::min(kReferenceTemperature_K, 0.7 * c.critical_temperature_K);
    double exponent = 1 + std::pow(1 - temperature_K / c.critical_temperature_K, 2.0 / 7.0);
    double z_ra = 0.29056 - 0.08775 * c.acentric_factor;
    return kGasConstant * c.critical_temperature_K / c.critical_pressure_kPa *
           std::pow(z_ra, exponent);
}

void CheckCompound(const CompoundData& c) {
    const std::pair<double, const char*> needed[] = {
        {c.molar_mass, "molar mass"},
        {c.critical_temperature_K, "critical temperature"},
        {c.critical_pressure_kPa, "critical pressure"},
    };
    for (auto [value, what] : needed) {
        if (!(value > 0)) throw ProcessError("compound " + c.name + ": " + what + " is missing");
    }
    if (c.acentric_factor == kEmpty) {
        throw ProcessError("compound " + c.name + ": acentric factor is missing");
    }
    if (c.cp.empty()) throw ProcessError("compound " + c.name + ": heat capacity is missing");
}

void CheckPressure(double pressure_kPa) {
    if (!(pressure_kPa > 0) || !std::isfinite(pressure_kPa)) {
        throw ProcessError("pressure " + FormatNumber(pressure_kPa) + " kPa is not above zero");
    }
}

void CheckTemperature(double temperature_K) {
    if (!(temperature_K >= kLowestTemperature_K && temperature_K <= kHighestTemperature_K)) {
        throw ProcessError("temperature " + FormatNumber(temperature_K - kZeroCelsius_K) +
                           " C is outside the range of the property methods");
    }
}

void CheckVapourFraction(double fraction) {
    if (!(fraction >= 0 && fraction <= 1)) {
        throw ProcessError("vapour fraction " + FormatNumber(fraction) + " is not within 0 and 1");
    }
}

}  // namespace

PhaseSplit SolveRachfordRice(const Composition& feed, const std::vector<double>& k_values) {
    if (Sum(feed, [&](std::size_t i) { return k_values[i] - 1; }) <= 0) return {0, 1};
    if (Sum(feed, [&](std::size_t i) { return 1 - 1 / k_values[i]; }) >= 0) return {1, 0};

    auto residual = [&](PhaseSplit split) {
        std::pair<double, double> result{0, 0};
        for (std::size_t i = 0; i < feed.size(); ++i) {
            if (feed[i] == 0) continue;
            double term = (k_values[i] - 1) / (split.liquid + split.vapour * k_values[i]);
            result.first += feed[i] * term;
            result.second += feed[i] * term * term;
        }
        return result;
    };
    // The unknown is the smaller phase: next to 1 a double has too few digits for a trace.
    if (residual({0.5, 0.5}).first > 0) {
        double liquid = SolveRising([&](double l) { return residual({1 - l, l}); }, {0, 0.5}, 0.25);
        return {1 - liquid, liquid};
    }
    auto falling = [&](double v) {
        auto [value, slope] = residual({v, 1 - v});
        return std::pair(-value, slope);
    };
    double vapour = SolveRising(falling, {0, 0.5}, 0.25);
    return {vapour, 1 - vapour};
}

Thermo::Thermo(std::vector<CompoundData> compounds) : compounds_(std::move(compounds)) {
    if (compounds_.empty()) throw ProcessError("the case has no compounds");
    for (const CompoundData& c : compounds_) {
        CheckCompound(c);
        Constants k;
        k.latent_exponent = kWilson * (1 + c.acentric_factor);
        k.latent_heat = k.latent_exponent * kGasConstant * c.critical_temperature_K;
        k.gas_enthalpy_offset = EnthalpyIntegral(c.cp, kReferenceTemperature_K);
        k.gas_entropy_offset = EntropyIntegral(c.cp, kReferenceTemperature_K);
        k.liquid_entropy_drop =
            kGasConstant * std::log(c.critical_pressure_kPa / kReferencePressure_kPa) +
            k.latent_heat / c.critical_temperature_K;
        k.liquid_volume = c.liquid_molar_volume > 0 ? c.liquid_molar_volume : RackettVolume(c);
        constants_.push_back(k);
    }
}

double Thermo::GasEnthalpy(std::size_t i, double temperature_K) const {
    return EnthalpyIntegral(compounds_[i].cp, temperature_K) - constants_[i].gas_enthalpy_offset;
}

double Thermo::GasEntropy(std::size_t i, double temperature_K) const {
    return EntropyIntegral(compounds_[i].cp, temperature_K) - constants_[i].gas_entropy_offset;
}

double Thermo::HeatCapacity(std::size_t i, double temperature_K) const {
    const std::vector<double>& cp = compounds_[i].cp;
    double value = 0;
    for (std::size_t k = cp.size(); k-- > 0;) value = value * temperature_K + cp[k];
    return value;
}

double Thermo::KValue(std::size_t i, double temperature_K, double pressure_kPa) const {
    const CompoundData& c = compounds_[i];
    return c.critical_pressure_kPa / pressure_kPa *
           std::exp(constants_[i].latent_exponent * (1 - c.critical_temperature_K / temperature_K));
}

std::vector<double> Thermo::KValues(double temperature_K, double pressure_kPa) const {
    std::vector<double> k(Count());
    for (std::size_t i = 0; i < k.size(); ++i) k[i] = KValue(i, temperature_K, pressure_kPa);
    return k;
}

double Thermo::VapourEnthalpy(const Composition& y, double temperature_K) const {
    return Sum(y, [&](std::size_t i) { return GasEnthalpy(i, temperature_K); });
}

double Thermo::LiquidEnthalpy(const Composition& x, double temperature_K) const {
    return Sum(x, [&](std::size_t i) {
        return GasEnthalpy(i, temperature_K) - constants_[i].latent_heat;
    });
}

double Thermo::VapourEntropy(const Composition& y, double temperature_K,
                             double pressure_kPa) const {
    double pressure_term = kGasConstant * std::log(pressure_kPa / kReferencePressure_kPa);
    return Sum(y, [&](std::size_t i) {
        return GasEntropy(i, temperature_K) - pressure_term - kGasConstant * std::log(y[i]);
    });
}

double Thermo::LiquidEntropy(const Composition& x, double temperature_K) const {
    return Sum(x, [&](std::size_t i) {
        return GasEntropy(i, temperature_K) - constants_[i].liquid_entropy_drop -
               kGasConstant * std::log(x[i]);
    });
}

double Thermo::HeatCapacity(const Composition& z, double temperature_K) const {
    return Sum(z, [&](std::size_t i) { return HeatCapacity(i, temperature_K); });
}

double Thermo::LiquidVolume(const Composition& x) const {
    return Sum(x, [&](std::size_t i) { return constants_[i].liquid_volume; });
}

double Thermo::MolarMass(const Composition& z) const {
    return Sum(z, [&](std::size_t i) { return compounds_[i].molar_mass; });
}

void Thermo::FillEnergies(FlashState& state) const {
    const auto [v, l] = state.split;
    double t = state.temperature_K;
    state.molar_enthalpy = 0;
    state.molar_entropy = 0;
    if (v > 0) {
        state.molar_enthalpy += v * VapourEnthalpy(state.vapour, t);
        state.molar_entropy += v * VapourEntropy(state.vapour, t, state.pressure_kPa);
    }
    if (l > 0) {
        state.molar_enthalpy += l * LiquidEnthalpy(state.liquid, t);
        state.molar_entropy += l * LiquidEntropy(state.liquid, t);
    }
}

FlashState Thermo::AtSplit(const Composition& z, double temperature_K, double pressure_kPa,
                           PhaseSplit split, const std::vector<double>& k_values) const {
    FlashState state{temperature_K, pressure_kPa, split, z, z, 0, 0};
    for (std::size_t i = 0; i < z.size(); ++i) {
        if (z[i] == 0) continue;
        state.liquid[i] = z[i] / (split.liquid + split.vapour * k_values[i]);
        state.vapour[i] = k_values[i] * state.liquid[i];
    }
    FillEnergies(state);
    return state;
}

FlashState Thermo::FlashPT(const Composition& z, double pressure_kPa, double temperature_K) const {
    CheckPressure(pressure_kPa);
    CheckTemperature(temperature_K);
    std::vector<double> k = KValues(temperature_K, pressure_kPa);
    PhaseSplit split = SolveRachfordRice(z, k);
    FlashState state = AtSplit(z, temperature_K, pressure_kPa, split, k);
    if (split.vapour == 0) state.vapour.clear();
    if (split.liquid == 0) state.liquid.clear();
    return state;
}

FlashState Thermo::FlashPV(const Composition& z, double pressure_kPa,
                           double vapour_fraction) const {
    CheckPressure(pressure_kPa);
    CheckVapourFraction(vapour_fraction);
    const double v = vapour_fraction;
    auto residual = [&](double t) {
        return SumAndSlope(z, v, [&](std::size_t i) {
            double k = KValue(i, t, pressure_kPa);
            return std::pair(k, k * constants_[i].latent_heat / (kGasConstant * t * t));
        });
    };
    if (!(residual(kHighestTemperature_K).first > 0) ||
        !(residual(kLowestTemperature_K).first < 0)) {
        throw ProcessError("no temperature gives vapour fraction " + FormatNumber(v) + " at " +
                           FormatNumber(pressure_kPa) + " kPa");
    }
    double start = Sum(z, [&](std::size_t i) {
        double ratio = std::log(pressure_kPa / compounds_[i].critical_pressure_kPa);
        double divisor = 1 - ratio / constants_[i].latent_exponent;
        return compounds_[i].critical_temperature_K / std::max(divisor, 0.2);
    });
    start = std::clamp(start, 1.1 * kLowestTemperature_K, 0.9 * kHighestTemperature_K);
    double t = SolveRising(residual, {kLowestTemperature_K, kHighestTemperature_K}, start);
    return AtSplit(z, t, pressure_kPa, {v, 1 - v}, KValues(t, pressure_kPa));
}

FlashState Thermo::FlashTV(const Composition& z, double temperature_K,
                           double vapour_fraction) const {
    CheckTemperature(temperature_K);
    CheckVapourFraction(vapour_fraction);
    const double v = vapour_fraction;
    double bubble = BubblePressure(z, temperature_K);
    double dew = DewPressure(z, temperature_K);
    if (!(dew > 0) || !std::isfinite(bubble)) {
        throw ProcessError("no pressure gives vapour fraction " + FormatNumber(v) + " at " +
                           FormatNumber(temperature_K - kZeroCelsius_K) + " C");
    }
    std::vector<double> k_at_1 = KValues(temperature_K, 1.0);
    // In the logarithm of 1/P the residual rises as it does with the temperature.
    auto residual = [&](double log_inverse) {
        return SumAndSlope(z, v, [&](std::size_t i) {
            double k = k_at_1[i] * std::exp(log_inverse);
            return std::pair(k, k);
        });
    };
    double pressure = bubble;
    if (v == 1) pressure = dew;
    if (v > 0 && v < 1 && dew < bubble) {
        double start = -(1 - v) * std::log(bubble) - v * std::log(dew);
        pressure = std::exp(-SolveRising(residual, {-std::log(bubble), -std::log(dew)}, start));
    }
    return AtSplit(z, temperature_K, pressure, {v, 1 - v}, KValues(temperature_K, pressure));
}

double Thermo::BubblePressure(const Composition& z, double temperature_K) const {
    return Sum(z, [&](std::size_t i) { return KValue(i, temperature_K, 1.0); });
}

double Thermo::DewPressure(const Composition& z, double temperature_K) const {
    return 1 / Sum(z, [&](std::size_t i) { return 1 / KValue(i, temperature_K, 1.0); });
}

namespace {

struct Trial {
    FlashState state;
    double excess;  // property minus target
};

// Widens from the guess towards the target. Cp polynomials turn over far outside their range, so
// the nearest sign change is the right one and the search doesn't start at the ends of the scale.
std::pair<Trial, Trial> FindBracket(double guess_K, auto&& at, const char* what) {
    Trial first =
        at(std::clamp(guess_K, 1.05 * kLowestTemperature_K, 0.95 * kHighestTemperature_K));
    Trial last = first;
    const double factor = first.excess > 0 ? 1 / 1.1 : 1.1;
    while ((last.excess > 0) == (first.excess > 0) && last.excess != 0) {
        double next = last.state.temperature_K * factor;
        if (next < kLowestTemperature_K || next > kHighestTemperature_K) {
            throw ProcessError(std::string("no temperature gives the ") + what);
        }
        first = std::move(last);
        last = at(next);
    }
    if (first.excess > last.excess) std::swap(first, last);
    return {std::move(first), std::move(last)};
}

}  // namespace

FlashState Thermo::FlashByEnergy(const Composition& z, double pressure_kPa, double target,
                                 double guess_K, double FlashState::*property) const {
    CheckPressure(pressure_kPa);
    const bool enthalpy = property == &FlashState::molar_enthalpy;
    auto at = [&](double t) {
        Trial trial{FlashPT(z, pressure_kPa, t), 0};
        trial.excess = trial.state.*property - target;
        return trial;
    };
    auto [low, high] = FindBracket(guess_K, at, enthalpy ? "molar enthalpy" : "molar entropy");
    const double scale = kGasConstant * (enthalpy ? guess_K : 1.0);
    const double tolerance = 1e-13 * std::max(std::abs(target), scale);

    double low_weight = low.excess, high_weight = high.excess;  // halved by the Illinois rule
    for (int i = 0; i < 200; ++i) {
        double t_low = low.state.temperature_K, t_high = high.state.temperature_K;
        if (std::abs(low.excess) <= tolerance) return low.state;
        if (std::abs(high.excess) <= tolerance) return high.state;
        if (t_high - t_low <= 4 * std::numeric_limits<double>::epsilon() * t_high) break;
        double t = t_low - low_weight * (t_high - t_low) / (high_weight - low_weight);
        if (i % 3 == 2 || !(t > t_low && t < t_high)) t = 0.5 * (t_low + t_high);
        Trial trial = at(t);
        if (trial.excess > 0) {
            high_weight = trial.excess;
            low_weight *= 0.5;
            high = std::move(trial);
        } else {
            low_weight = trial.excess;
            high_weight *= 0.5;
            low = std::move(trial);
        }
    }
    // Boiling in no temperature interval at all, or in one of a few units in the last place: the
    // two ends are the same temperature, and the target divides the feed between them.
    double part = -low.excess / (high.excess - low.excess);
    PhaseSplit split{
        low.state.split.vapour + part * (high.state.split.vapour - low.state.split.vapour),
        low.state.split.liquid + part * (high.state.split.liquid - low.state.split.liquid)};
    double t = 0.5 * (low.state.temperature_K + high.state.temperature_K);
    return AtSplit(z, t, pressure_kPa, split, KValues(t, pressure_kPa));
}

}  // namespace fixtop::casehost::process
