// SPDX-License-Identifier: Apache-2.0
#pragma once

// Models of unit operations: what one of them makes of its feeds. A model is a plain function; the
// table of models by type word is the only place that lists them.
//
// Units are the internal units of a case (C, kPa, kgmole/h, kJ/h, kJ/(C h), percent). A number that
// nobody gave is kEmpty. A model throws ProcessError or UnderSpecified with a text that names no
// object; the flowsheet puts the name in front.

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "process/thermo.h"

namespace fixtop::casehost::process {

// A material stream that is solved. A stream without flow has a state all the same.
struct MaterialState {
    FlashState flash;
    Composition composition;
    double molar_flow = 0;

    double HeatFlow() const { return molar_flow * flash.molar_enthalpy; }
    double Temperature_C() const { return flash.temperature_K - kZeroCelsius_K; }
    double Pressure() const { return flash.pressure_kPa; }
};

// What stands specified in the stream on a product port.
struct ProductGiven {
    double temperature_C = kEmpty;
    double pressure_kPa = kEmpty;
    double vapour_fraction = kEmpty;
};

// By display name; a scalar has one element. Elements that nobody gave are kEmpty.
using Parameters = std::map<std::string, std::vector<double>, std::less<>>;

struct UnitInput {
    std::vector<MaterialState> feeds;
    std::vector<ProductGiven> products;  // one for each connected product port
    Parameters given;
    double energy = kEmpty;  // heat or power known from energy streams, positive into the unit
};

struct UnitOutput {
    std::vector<MaterialState> products;
    double energy = 0;   // heat or power from outside, positive into the unit
    Parameters results;  // given parameters among them
    std::string warning;
};

using UnitFunction = UnitOutput (*)(const Thermo& thermo, const UnitInput& input);

struct UnitModel {
    const char* type;
    UnitFunction solve;
    std::size_t least_feeds, most_feeds;
    std::size_t least_products, most_products;
};

// The two-sided heat exchanger: counter-current, without loss to the outside. Feed and product 0
// are the tube side, 1 the shell side. Exactly one of duty, UA and an outlet temperature is given;
// the pressure of each side as for every one-in one-out operation.
//
// Duty goes from the side with the hotter inlet to the other. UA belongs to the logarithmic mean of
// the two end differences (Perry's Chemical Engineers' Handbook, 8th ed., section 11), also where a
// side boils or condenses: there are no zones.
UnitOutput SolveHeatExchanger(const Thermo& thermo, const UnitInput& input);
// True for the name of a result of one of its sides.
bool IsSideResult(std::string_view name);

// Null for a type word without a model.
const UnitModel* FindUnitModel(std::string_view type);

// True for a name that some model reports a result under.
bool IsUnitResult(std::string_view name);

// Logarithmic mean of two end differences, both above 0.
double LogMeanDifference(double first, double second);

inline constexpr char kDeltaT[] = "Delta T";

}  // namespace fixtop::casehost::process
