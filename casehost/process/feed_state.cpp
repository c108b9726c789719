// SPDX-License-Identifier: Apache-2.0
#include "process/feed_state.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace fixtop::casehost::process {
namespace {

constexpr double kSumTolerance = 1e-6;
constexpr double kMatchTolerance = 1e-6;

double Normalise(Composition& fractions, const Thermo& thermo) {
    for (std::size_t i = 0; i < fractions.size(); ++i) {
        const std::string& name = thermo.Compounds()[i].name;
        if (fractions[i] == kEmpty) {
            throw UnderSpecified("composition of " + name + " is not specified");
        }
        if (!(fractions[i] >= 0)) {
            throw ProcessError("fraction " + FormatNumber(fractions[i]) + " of " + name +
                               " is below zero");
        }
    }
    double sum = std::accumulate(fractions.begin(), fractions.end(), 0.0);
    if (!(sum > 0)) throw ProcessError("composition sums to zero");
    for (double& fraction : fractions) fraction /= sum;
    return sum;
}

Composition FeedComposition(const Thermo& thermo, const StreamGiven& given, std::string& warning) {
    const bool by_mole = !given.mole_fractions.empty();
    if (!by_mole && given.mass_fractions.empty()) {
        throw UnderSpecified("composition is not specified");
    }
    if (by_mole && !given.mass_fractions.empty()) {
        throw ProcessError("mole fractions and mass fractions are both specified");
    }
    Composition z = by_mole ? given.mole_fractions : given.mass_fractions;
    double sum = Normalise(z, thermo);
    if (std::abs(sum - 1) > kSumTolerance) {
        warning = "composition sums to " + FormatNumber(sum) + " and is normalised";
    }
    if (!by_mole) {
        for (std::size_t i = 0; i < z.size(); ++i) z[i] /= thermo.Compounds()[i].molar_mass;
        Normalise(z, thermo);
    }
    return z;
}

double FeedFlow(const Thermo& thermo, const StreamGiven& given, const Composition& z) {
    const bool molar = given.molar_flow != kEmpty, mass = given.mass_flow != kEmpty;
    if (molar && mass) throw ProcessError("molar flow and mass flow are both specified");
    if (!molar && !mass) throw UnderSpecified("flow is not specified");
    double flow = molar ? given.molar_flow : given.mass_flow;
    if (!(flow >= 0)) {
        throw ProcessError(std::string(molar ? "molar" : "mass") + " flow " + FormatNumber(flow) +
                           " is below zero");
    }
    return molar ? flow : flow / thermo.MolarMass(z);
}

constexpr unsigned kT = 1, kP = 2, kV = 4, kH = 8;

unsigned Conditions(const StreamGiven& given) {
    unsigned conditions = 0;
    if (given.temperature_C != kEmpty) conditions |= kT;
    if (given.pressure_kPa != kEmpty) conditions |= kP;
    if (given.vapour_fraction != kEmpty) conditions |= kV;
    if (given.molar_enthalpy != kEmpty) conditions |= kH;
    return conditions;
}

std::string Listed(unsigned conditions) {
    constexpr std::pair<unsigned, const char*> kWords[] = {
        {kT, "temperature"}, {kP, "pressure"}, {kV, "vapour fraction"}, {kH, "molar enthalpy"}};
    std::string text;
    for (auto [condition, word] : kWords) {
        if (!(conditions & condition)) continue;
        conditions &= ~condition;
        if (!text.empty()) text += conditions ? ", " : " and ";
        text += word;
    }
    return text;
}

[[noreturn]] void RefuseConditions(unsigned conditions) {
    switch (conditions) {
        case 0:
            throw UnderSpecified("temperature and pressure are not specified");
        case kP:
            throw UnderSpecified("temperature is not specified");
        case kT:
        case kH:
            throw UnderSpecified("pressure is not specified");
        case kV:
            throw UnderSpecified("temperature or pressure is not specified");
        case kT | kH:
        case kV | kH:
            throw ProcessError(Listed(conditions) + " don't determine the state");
        default:
            throw ProcessError(Listed(conditions) + " are all specified");
    }
}

FlashState FeedFlash(const Thermo& thermo, const StreamGiven& given, const Composition& z) {
    const double t = given.temperature_C + kZeroCelsius_K, p = given.pressure_kPa;
    switch (unsigned conditions = Conditions(given)) {
        case kT | kP:
            return thermo.FlashPT(z, p, t);
        case kP | kV:
            return thermo.FlashPV(z, p, given.vapour_fraction);
        case kT | kV:
            return thermo.FlashTV(z, t, given.vapour_fraction);
        case kP | kH:
            return thermo.FlashPH(z, p, given.molar_enthalpy, kReferenceTemperature_K);
        default:
            RefuseConditions(conditions);
    }
}

struct Comparison {
    const char* words;
    const char* unit;
    double given;
    double calculated;
    double scale;
};

}  // namespace

FeedState SolveFeed(const Thermo& thermo, const StreamGiven& given) {
    FeedState feed;
    MaterialState& state = feed.state;
    state.composition = FeedComposition(thermo, given, feed.warning);
    state.molar_flow = FeedFlow(thermo, given, state.composition);
    state.flash = FeedFlash(thermo, given, state.composition);
    return feed;
}

std::string Contradiction(const Thermo& thermo, const StreamGiven& given,
                          const MaterialState& state) {
    const double mass_flow = state.molar_flow * thermo.MolarMass(state.composition);
    const double enthalpy = state.flash.molar_enthalpy;
    const Comparison comparisons[] = {
        {"temperature", " C", given.temperature_C, state.Temperature_C(),
         state.flash.temperature_K},
        {"pressure", " kPa", given.pressure_kPa, state.Pressure(), state.Pressure()},
        {"vapour fraction", "", given.vapour_fraction, state.flash.split.vapour, 1},
        {"molar enthalpy", " kJ/kgmole", given.molar_enthalpy, enthalpy,
         std::max(std::abs(enthalpy), kGasConstant * state.flash.temperature_K)},
        {"molar flow", " kgmole/h", given.molar_flow, state.molar_flow, state.molar_flow},
        {"mass flow", " kg/h", given.mass_flow, mass_flow, mass_flow},
    };
    auto text = [](const Comparison& c) {
        return std::string("specified ") + c.words + " " + FormatNumber(c.given) + c.unit +
               " differs from calculated " + FormatNumber(c.calculated) + c.unit;
    };
    for (const Comparison& c : comparisons) {
        if (c.given == kEmpty) continue;
        if (std::abs(c.given - c.calculated) > kMatchTolerance * std::abs(c.scale)) return text(c);
    }
    for (std::size_t i = 0; i < given.mole_fractions.size(); ++i) {
        if (given.mole_fractions[i] == kEmpty) continue;
        std::string words = "mole fraction of " + thermo.Compounds()[i].name;
        Comparison c{words.c_str(), "", given.mole_fractions[i], state.composition[i], 1};
        if (std::abs(c.given - c.calculated) > kMatchTolerance) return text(c);
    }
    return "";
}

}  // namespace fixtop::casehost::process
