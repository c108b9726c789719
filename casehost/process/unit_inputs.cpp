// SPDX-License-Identifier: Apache-2.0
#include "process/unit_inputs.h"

#include <algorithm>
#include <limits>

namespace fixtop::casehost::process {

double Given(const UnitInput& input, std::string_view name) {
    auto found = input.given.find(name);
    return found == input.given.end() || found->second.empty() ? kEmpty : found->second.front();
}

std::size_t OneOf(const std::vector<Choice>& choices, const std::string& missing) {
    std::size_t found = choices.size();
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (choices[i].value == kEmpty) continue;
        if (found != choices.size()) {
            throw ProcessError(std::string(choices[found].words) + " and " + choices[i].words +
                               " are both specified");
        }
        found = i;
    }
    if (found == choices.size()) throw UnderSpecified(missing + " must be specified");
    return found;
}

double ProductPressure(const UnitInput& input, double feed_kPa, std::size_t index,
                       const PressureNames& names) {
    const std::string side = names.side;
    const std::string drop = side + "pressure drop", product = side + "product pressure";
    const std::vector<Choice> choices = {
        {drop.c_str(), Given(input, names.drop)},
        {product.c_str(), Given(input, names.product)},
        {"pressure of the product stream", input.products[index].pressure_kPa},
    };
    std::size_t chosen = OneOf(choices, drop + " or product pressure");
    double pressure_kPa = chosen == 0 ? feed_kPa - choices[0].value : choices[chosen].value;
    if (!(pressure_kPa > 0)) {
        throw ProcessError(product + " " + FormatNumber(pressure_kPa) + " kPa is not above zero");
    }
    return pressure_kPa;
}

double MolarChange(double heat, double molar_flow) {
    if (heat == 0) return 0;
    if (molar_flow == 0) throw ProcessError("a duty is specified but the feed has no flow");
    return heat / molar_flow;
}

MaterialState AtEnthalpy(const Thermo& thermo, const MaterialState& from, double pressure_kPa,
                         double molar_enthalpy) {
    MaterialState to = from;
    to.flash =
        thermo.FlashPH(from.composition, pressure_kPa, molar_enthalpy, from.flash.temperature_K);
    return to;
}

MaterialState Combine(const Thermo& thermo, const std::vector<MaterialState>& feeds,
                      double pressure_kPa) {
    MaterialState sum;
    sum.composition.assign(thermo.Count(), 0.0);
    double heat = 0, weighted_temperature = 0;
    for (const MaterialState& feed : feeds) {
        sum.molar_flow += feed.molar_flow;
        heat += feed.HeatFlow();
        weighted_temperature += feed.molar_flow * feed.flash.temperature_K;
        for (std::size_t i = 0; i < thermo.Count(); ++i) {
            sum.composition[i] += feed.molar_flow * feed.composition[i];
        }
    }
    if (sum.molar_flow == 0) {
        return AtEnthalpy(thermo, feeds.front(), pressure_kPa, feeds.front().flash.molar_enthalpy);
    }
    for (double& fraction : sum.composition) fraction /= sum.molar_flow;
    sum.flash = thermo.FlashPH(sum.composition, pressure_kPa, heat / sum.molar_flow,
                               weighted_temperature / sum.molar_flow);
    return sum;
}

double LowestPressure(const std::vector<MaterialState>& feeds) {
    double flowing = std::numeric_limits<double>::infinity(), any = flowing;
    for (const MaterialState& feed : feeds) {
        any = std::min(any, feed.Pressure());
        if (feed.molar_flow > 0) flowing = std::min(flowing, feed.Pressure());
    }
    return flowing < std::numeric_limits<double>::infinity() ? flowing : any;
}

}  // namespace fixtop::casehost::process
