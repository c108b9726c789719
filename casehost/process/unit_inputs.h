// SPDX-License-Identifier: Apache-2.0
#pragma once

// How the models read their specifications: one place for "exactly one of these must be given" and
// for the texts that say what is missing or given twice.

#include <string>
#include <string_view>
#include <vector>

#include "process/unit_ops.h"

namespace fixtop::casehost::process {

// The first element of a given parameter, else kEmpty.
double Given(const UnitInput& input, std::string_view name);

// One way of specifying, with the words for it.
struct Choice {
    const char* words;
    double value;
};

// The index of the only choice with a value. None: UnderSpecified "<missing> must be specified";
// two:
// "<words> and <words> are both specified".
std::size_t OneOf(const std::vector<Choice>& choices, const std::string& missing);

// The pressure of product `index`, from the drop below `feed_kPa`, from the parameter
// `product_name` or from the product stream. `side` ("tube side ") goes before the texts.
struct PressureNames {
    const char* drop;
    const char* product;
    const char* side = "";
};
double ProductPressure(const UnitInput& input, double feed_kPa, std::size_t index,
                       const PressureNames& names);

// Change of molar enthalpy when `heat` (kJ/h) goes into a flow.
double MolarChange(double heat, double molar_flow);

// A stream of the same composition and flow at a new pressure and molar enthalpy.
MaterialState AtEnthalpy(const Thermo& thermo, const MaterialState& from, double pressure_kPa,
                         double molar_enthalpy);

// All feeds put together at `pressure_kPa` without heat. Without any flow it is the first feed.
MaterialState Combine(const Thermo& thermo, const std::vector<MaterialState>& feeds,
                      double pressure_kPa);

// The lowest pressure among the feeds that flow, or among all when none does.
double LowestPressure(const std::vector<MaterialState>& feeds);

}  // namespace fixtop::casehost::process
