// SPDX-License-Identifier: Apache-2.0
#include "process/results.h"

#include <algorithm>

#include "casehost/stream_names.h"
#include "casehost/unit_op_names.h"

namespace fixtop::casehost::process {
namespace {

namespace cn = casehost::names;

Composition MassFractions(const Thermo& thermo, const Composition& moles) {
    if (moles.empty()) return {};
    Composition mass(moles.size());
    double total = thermo.MolarMass(moles);
    for (std::size_t i = 0; i < moles.size(); ++i) {
        mass[i] = moles[i] * thermo.Compounds()[i].molar_mass / total;
    }
    return mass;
}

// m3/kgmole of the whole stream.
double MolarVolume(const Thermo& thermo, const FlashState& flash) {
    double volume = 0;
    if (flash.split.vapour > 0) {
        volume += flash.split.vapour * kGasConstant * flash.temperature_K / flash.pressure_kPa;
    }
    if (flash.split.liquid > 0) volume += flash.split.liquid * thermo.LiquidVolume(flash.liquid);
    return volume;
}

// A row for each phase of ResultPhases(), empty values for an absent phase.
std::vector<double> PhaseRows(const Composition& overall, const Composition& vapour,
                              const Composition& liquid) {
    std::vector<double> rows;
    for (const Composition* row : {&overall, &vapour, &liquid, &liquid}) {
        for (std::size_t i = 0; i < overall.size(); ++i) {
            rows.push_back(row->empty() ? kEmpty : (*row)[i]);
        }
    }
    return rows;
}

// 15 C and 101.325 kPa.
constexpr double kStandardVolume = kGasConstant * 288.15 / 101.325;  // m3/kgmole of a gas

Composition Scaled(Composition values, double by) {
    for (double& value : values) value *= by;
    return values;
}

// Flows, fractions and volumes of the phases, in the order of ResultPhases().
void AddPhases(const Thermo& thermo, const MaterialState& state, Parameters& results) {
    const FlashState& flash = state.flash;
    const auto [v, l] = flash.split;
    const double whole = thermo.MolarMass(state.composition);
    const double gas = v > 0 ? thermo.MolarMass(flash.vapour) : 0;
    const double fluid = l > 0 ? thermo.MolarMass(flash.liquid) : 0;
    const double volume = MolarVolume(thermo, flash);
    const double liquid = l > 0 ? l * thermo.LiquidVolume(flash.liquid) : 0;
    const std::vector<double> parts = {1.0, v, l, l};
    const std::vector<double> mass = {whole, v * gas, l * fluid, l * fluid};
    const std::vector<double> volumes = {volume, volume - liquid, liquid, liquid};
    results["Phase Molar Flow"] = Scaled(parts, state.molar_flow);
    results["Phase Mass Flow"] = Scaled(mass, state.molar_flow);
    results["Phase Mass Fraction"] = Scaled(mass, 1 / whole);
    results["Phase Actual Volume Flow"] = Scaled(volumes, state.molar_flow);
    results["Phase Volume Fraction"] = Scaled(volumes, 1 / volume);
    results["Phase Molecular Weight"] = {whole, v > 0 ? gas : kEmpty, l > 0 ? fluid : kEmpty,
                                         l > 0 ? fluid : kEmpty};
}

// The potentials follow from enthalpy h, entropy s, pressure and volume: u = h - p v, g = h - T s,
// a = u - T s.
void AddPotentials(const Thermo& thermo, const MaterialState& state, Parameters& results) {
    const FlashState& flash = state.flash;
    const double h = flash.molar_enthalpy, s = flash.molar_entropy;
    const double u = h - flash.pressure_kPa * MolarVolume(thermo, flash);
    const double heat = flash.temperature_K * s;
    const double cp = thermo.HeatCapacity(state.composition, flash.temperature_K);
    const double mass = thermo.MolarMass(state.composition);
    const std::pair<const char*, double> rows[] = {
        {"Enthalpy", h},        {"Entropy", s},
        {"Internal Energy", u}, {"Gibbs Energy", h - heat},
        {"Heat Capacity", cp},  {"Helmholtz Energy", u - heat}};
    for (const auto& [name, value] : rows) {
        results[std::string("Molar ") + name] = {value};
        results[std::string("Mass ") + name] = {value / mass};
    }
}

void Write(ValueData& value, double number) {
    if (IsInput(value)) return;
    value.number = number + 0.0;  // a zero of no flow has no sign
    value.state = number == kEmpty ? VariableState::missing : VariableState::calculated;
}

// Where a labelled element stands in a result's order; past the end when it isn't in it.
std::size_t Place(const DimensionData& dimension, std::size_t element,
                  const std::vector<std::string>& order) {
    if (element >= dimension.labels.size()) return element;
    auto found = std::find(order.begin(), order.end(), dimension.labels[element]);
    return static_cast<std::size_t>(found - order.begin());
}

// How the results' dimensions are ordered.
struct Orders {
    std::vector<std::string> compounds;
    const std::vector<std::string>& phases;
};

bool OverPhases(const DimensionData& dimension, const Orders& orders) {
    return std::any_of(dimension.labels.begin(), dimension.labels.end(), [&](const auto& label) {
        return std::find(orders.phases.begin(), orders.phases.end(), label) != orders.phases.end();
    });
}

// Elements of an array by label where it has labels, by position where it has none.
void WriteArray(VariableData& variable, const std::vector<double>& found, const Orders& orders) {
    const auto& dimensions = variable.spec->dimensions;
    const std::size_t columns = dimensions.empty() ? 1 : std::max(dimensions.back().count, 1);
    for (std::size_t e = 0; e < variable.values.size(); ++e) {
        std::size_t place = e;
        if (dimensions.size() == 1) {
            const bool phases = OverPhases(dimensions[0], orders);
            const auto& order = phases ? orders.phases : orders.compounds;
            if (phases || !orders.compounds.empty()) place = Place(dimensions[0], e, order);
        } else if (dimensions.size() == 2) {
            std::size_t row = Place(dimensions[0], e / columns, orders.phases);
            std::size_t column = Place(dimensions[1], e % columns, orders.compounds);
            bool known = row < orders.phases.size() && column < orders.compounds.size();
            place = known ? row * orders.compounds.size() + column : found.size();
        }
        Write(variable.values[e], place < found.size() ? found[place] : kEmpty);
    }
}

// What the results don't hold becomes empty where `ours` says that a solve makes it.
void WriteVariables(ObjectData& object, const Parameters& results, const Orders& orders,
                    bool (*ours)(std::string_view name)) {
    for (VariableData& variable : object.variables) {
        if (!variable.spec || variable.spec->kind != ValueKind::real) continue;
        auto found = results.find(variable.spec->name);
        if (found != results.end()) {
            WriteArray(variable, found->second, orders);
            continue;
        }
        if (!ours(variable.spec->name)) continue;
        for (ValueData& value : variable.values) {
            if (value.state == VariableState::calculated) Write(value, kEmpty);
        }
    }
}

void WriteStatus(ObjectData& object, ObjectStatus status, const std::string& text) {
    object.status = status;
    object.status_text = text;
}

// A sub-flowsheet's operation is as well as the worst of its parts, and says what is wrong with it.
void WriteTemplate(const Flowsheet& sheet, const TemplateNode& node) {
    ObjectStatus worst = ObjectStatus::ok;
    std::string text;
    auto look = [&](ObjectStatus status, const std::string& why) {
        if (status == ObjectStatus::ok || worst == ObjectStatus::not_solved) return;
        bool only_warning = status == ObjectStatus::warning;
        if (only_warning && worst == ObjectStatus::warning) return;
        worst = only_warning ? ObjectStatus::warning : ObjectStatus::not_solved;
        text = why;
    };
    for (std::size_t i = node.first_unit; i < node.last_unit; ++i) {
        look(sheet.units[i].status, sheet.units[i].text);
    }
    for (std::size_t i = node.first_stream; i < node.last_stream; ++i) {
        look(sheet.streams[i].status, sheet.streams[i].text);
    }
    WriteStatus(*node.object, worst, text);
}

}  // namespace

const std::vector<std::string>& ResultPhases() {
    static const std::vector<std::string> phases = {cn::kOverall, cn::kVapourPhase,
                                                    cn::kLiquidPhase, "Total Liquid Phase"};
    return phases;
}

Parameters StreamProperties(const Thermo& thermo, const MaterialState& state) {
    const FlashState& flash = state.flash;
    const Composition& z = state.composition;
    const auto [v, l] = flash.split;
    const Composition vapour = v > 0 ? flash.vapour : Composition();
    const Composition liquid = l > 0 ? flash.liquid : Composition();
    const double molar_mass = thermo.MolarMass(z), volume = MolarVolume(thermo, flash);
    const std::vector<double> k = thermo.KValues(flash.temperature_K, flash.pressure_kPa);
    Parameters results = {
        {cn::kTemperature, {state.Temperature_C()}},
        {cn::kPressure, {state.Pressure()}},
        {cn::kMolarFlow, {state.molar_flow}},
        {cn::kMassFlow, {state.molar_flow * molar_mass}},
        {"Actual Volume Flow", {state.molar_flow * volume}},
        {cn::kVapourFraction, {v}},
        {cn::kCompMoleFrac, z},
        {cn::kCompMassFrac, MassFractions(thermo, z)},
        {cn::kPhaseFraction, {1.0, v, l, l}},
        {cn::kPhaseCompMoleFrac, PhaseRows(z, vapour, liquid)},
        {"Phase Comp Mass Frac", PhaseRows(MassFractions(thermo, z), MassFractions(thermo, vapour),
                                           MassFractions(thermo, liquid))},
        {"Comp K Value - Mixed Liquid", k},
        {"Comp K Value - Light Liquid", k},
        {cn::kHeatFlow, {state.HeatFlow()}},
        {cn::kMassDensity, {molar_mass / volume}},
        {cn::kMolarMass, {molar_mass}},
        {"Molar Volume", {volume}},
        {"Std Vapour Volume Flow", {state.molar_flow * kStandardVolume}},
        {"Comp Molar Flow", Scaled(z, state.molar_flow)},
        {"Comp Mass Flow", Scaled(MassFractions(thermo, z), state.molar_flow * molar_mass)},
    };
    AddPhases(thermo, state, results);
    AddPotentials(thermo, state, results);
    return results;
}

void WriteResults(const Flowsheet& sheet, const Thermo* thermo) {
    Orders stream_orders{{}, ResultPhases()};
    if (thermo) {
        for (const CompoundData& c : thermo->Compounds()) stream_orders.compounds.push_back(c.name);
    }
    const Orders unit_orders{{}, ResultPhases()};
    for (const StreamNode& stream : sheet.streams) {
        Parameters results;
        if (stream.energy && stream.Solved()) results[cn::kHeatFlow] = {stream.heat_flow};
        if (stream.state && thermo) results = StreamProperties(*thermo, *stream.state);
        WriteVariables(*stream.object, results, stream_orders,
                       [](std::string_view) { return true; });
        WriteStatus(*stream.object, stream.status, stream.text);
    }
    for (const UnitNode& unit : sheet.units) {
        if (unit.Link()) continue;
        if (unit.model) WriteVariables(*unit.object, unit.results, unit_orders, IsUnitResult);
        WriteStatus(*unit.object, unit.status, unit.text);
    }
    for (const TemplateNode& node : sheet.templates) WriteTemplate(sheet, node);
}

}  // namespace fixtop::casehost::process
