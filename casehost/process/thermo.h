// SPDX-License-Identifier: Apache-2.0
#pragma once

// Vapour-liquid equilibrium and energy properties of ideal mixtures: an ideal gas above an ideal
// solution, with Wilson K-values. A stand-in that is consistent and quick, not a design tool.
//
// Units: temperature in K (suffix _K) or C (suffix _C), pressure in kPa, enthalpy in kJ/kgmole,
// entropy in kJ/(kgmole K), volume in m3/kgmole, R = 8.314462618 kJ/(kgmole K) (CODATA 2018).
// Compositions are mole fractions in the order of the compounds; they sum to 1. A fraction of
// exactly 0 takes a compound out of every sum.
//
// Formulas:
//   ideal-gas enthalpy   h(T) = integral of Cp from 298.15 K, Cp = sum of cp[k] T^k
//   ideal-gas entropy    s(T, P) = integral of Cp/T from 298.15 K - R ln(P / 101.325 kPa)
//                        (Smith, Van Ness, Abbott, Introduction to Chemical Engineering
//                        Thermodynamics, 7th ed., chapters 4 and 6)
//   K-value              ln K = ln(Pc/P) + 5.373 (1 + w) (1 - Tc/T)
//                        (G. M. Wilson, 65th AIChE National Meeting, Cleveland, 1969)
//   heat of vaporisation dH = -R d(ln K)/d(1/T) = 5.373 R Tc (1 + w), the Clausius-Clapeyron
//                        equation on the K-value: enthalpies and equilibrium agree exactly
//   liquid               h_liq = h - dH and s_liq = s(T, 101.325) - R ln(Pc/101.325) - dH/Tc, which
//                        makes the Gibbs energies of the phases equal where y = K x
//   mixing               ideal: -R sum of x ln x in each phase
//   phase split          H. H. Rachford, J. D. Rice, J. Pet. Technol. 4 (10), 1952, p. 19
//   liquid volume        as given; without one, H. G. Rackett, J. Chem. Eng. Data 15, 1970, p. 514
//                        with Zra = 0.29056 - 0.08775 w (T. Yamada, R. D. Gunn, J. Chem. Eng. Data
//                        18, 1973, p. 234) at 298.15 K or 0.7 Tc, whichever is lower
//
// Above the critical temperature the K-value is extrapolated, as is usual with this formula.
// A failure (no such state, compound data missing) throws ProcessError, which stays inside this
// library: the flowsheet turns it into the status text of an object.

#include <cstdio>
#include <stdexcept>

#include "casehost/case_data.h"

namespace fixtop::casehost::process {

// Failures inside the process library. They never leave it: the flowsheet turns each into the
// status and the status text of one object.
//
// No such state, compound data missing, contradictory specifications.
class ProcessError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

// Something that the user has to give is not given.
class UnderSpecified : public ProcessError {
 public:
    using ProcessError::ProcessError;
};

inline std::string FormatNumber(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", value);
    return text;
}

inline constexpr double kGasConstant = 8.314462618;
inline constexpr double kZeroCelsius_K = 273.15;
inline constexpr double kReferenceTemperature_K = 298.15;
inline constexpr double kReferencePressure_kPa = 101.325;
inline constexpr double kLowestTemperature_K = 20.0;
inline constexpr double kHighestTemperature_K = 5000.0;

using Composition = std::vector<double>;

// Vapour and liquid part of one unit of feed. Both are carried, so that a trace of either phase
// keeps its full relative precision.
struct PhaseSplit {
    double vapour = 0;
    double liquid = 1;
};

// The root of sum z (K-1) / (liquid + vapour K) = 0. All liquid when sum z K <= 1, all vapour when
// sum z / K <= 1; a mixture whose K-values are all exactly 1 is taken as liquid.
PhaseSplit SolveRachfordRice(const Composition& feed, const std::vector<double>& k_values);

// A mixture at equilibrium. `liquid` and `vapour` are empty where the phase is absent, except from
// FlashPV and FlashTV, which tell the incipient phase of a bubble or dew point too.
struct FlashState {
    double temperature_K = 0;
    double pressure_kPa = 0;
    PhaseSplit split;
    Composition liquid;
    Composition vapour;
    double molar_enthalpy = 0;
    double molar_entropy = 0;
};

class Thermo {
 public:
    // Throws ProcessError "compound X: critical pressure is missing" and the like.
    explicit Thermo(std::vector<CompoundData> compounds);

    const std::vector<CompoundData>& Compounds() const { return compounds_; }
    std::size_t Count() const { return compounds_.size(); }

    double GasEnthalpy(std::size_t i, double temperature_K) const;
    double GasEntropy(std::size_t i, double temperature_K) const;  // at 101.325 kPa
    double HeatCapacity(std::size_t i, double temperature_K) const;
    double HeatOfVaporisation(std::size_t i) const { return constants_[i].latent_heat; }
    double KValue(std::size_t i, double temperature_K, double pressure_kPa) const;
    std::vector<double> KValues(double temperature_K, double pressure_kPa) const;

    double VapourEnthalpy(const Composition& y, double temperature_K) const;
    double LiquidEnthalpy(const Composition& x, double temperature_K) const;
    double VapourEntropy(const Composition& y, double temperature_K, double pressure_kPa) const;
    double LiquidEntropy(const Composition& x, double temperature_K) const;
    double HeatCapacity(const Composition& z, double temperature_K) const;  // either phase
    double LiquidVolume(const Composition& x) const;
    double MolarMass(const Composition& z) const;  // kg/kgmole
    // Enthalpy and entropy of a state whose split and phase compositions are known.
    void FillEnergies(FlashState& state) const;

    FlashState FlashPT(const Composition& z, double pressure_kPa, double temperature_K) const;
    FlashState FlashPV(const Composition& z, double pressure_kPa, double vapour_fraction) const;
    FlashState FlashTV(const Composition& z, double temperature_K, double vapour_fraction) const;
    // The state whose molar enthalpy or entropy is the target. `guess_K` is where the search
    // starts. A pure compound between its two phases is found too: the temperature is the
    // saturation temperature and the target sets the vapour fraction.
    FlashState FlashPH(const Composition& z, double pressure_kPa, double molar_enthalpy,
                       double guess_K) const {
        return FlashByEnergy(z, pressure_kPa, molar_enthalpy, guess_K, &FlashState::molar_enthalpy);
    }
    FlashState FlashPS(const Composition& z, double pressure_kPa, double molar_entropy,
                       double guess_K) const {
        return FlashByEnergy(z, pressure_kPa, molar_entropy, guess_K, &FlashState::molar_entropy);
    }

    double BubblePressure(const Composition& z, double temperature_K) const;
    double DewPressure(const Composition& z, double temperature_K) const;

 private:
    struct Constants {
        double latent_heat;         // kJ/kgmole
        double latent_exponent;     // 5.373 (1 + w)
        double gas_entropy_offset;  // so that entropy is 0 at the reference
        double gas_enthalpy_offset;
        double liquid_entropy_drop;  // from gas at 101.325 kPa to liquid
        double liquid_volume;
    };

    FlashState AtSplit(const Composition& z, double temperature_K, double pressure_kPa,
                       PhaseSplit split, const std::vector<double>& k_values) const;
    FlashState FlashByEnergy(const Composition& z, double pressure_kPa, double target,
                             double guess_K, double FlashState::*property) const;

    std::vector<CompoundData> compounds_;
    std::vector<Constants> constants_;
};

}  // namespace fixtop::casehost::process
