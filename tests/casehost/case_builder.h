// SPDX-License-Identifier: Apache-2.0
#pragma once

// A short way to write cases down in tests.

#include <string>
#include <vector>

#include "casehost/case_data.h"
#include "casehost/stream_names.h"
#include "casehost/unit_op_names.h"

namespace fixtop::casehost::test {

inline std::shared_ptr<VariableSpec> Spec(const std::string& name, ValueKind kind = ValueKind::real,
                                          const std::string& quantity = "") {
    auto spec = std::make_shared<VariableSpec>();
    spec->name = name;
    spec->kind = kind;
    spec->quantity = quantity;
    return spec;
}

inline VariableData Real(const std::string& name, const std::string& quantity, double value,
                         VariableState state = VariableState::specified) {
    return {Spec(name, ValueKind::real, quantity), {{value, "", state}}};
}

inline VariableData TextVariable(const std::string& name, const std::string& text) {
    return {Spec(name, ValueKind::text), {{kEmpty, text, VariableState::specified}}};
}

inline VariableData Choice(const std::string& name, std::vector<std::string> options, int ordinal) {
    auto spec = Spec(name, ValueKind::enumeration);
    spec->options = std::move(options);
    return {spec, {{static_cast<double>(ordinal), "", VariableState::specified}}};
}

inline VariableData Attachment(const std::string& name, const std::string& path) {
    return {Spec(name, ValueKind::attachment), {{kEmpty, path, VariableState::specified}}};
}

inline VariableData Array(const std::string& name, const std::string& quantity,
                          std::vector<DimensionData> dimensions, std::vector<double> numbers,
                          VariableState state = VariableState::specified) {
    auto spec = Spec(name, ValueKind::real, quantity);
    spec->dimensions = std::move(dimensions);
    VariableData variable{spec, {}};
    for (double number : numbers) variable.values.push_back({number, "", state});
    return variable;
}

inline VariableData Composition(std::vector<std::string> compounds, std::vector<double> fractions,
                                VariableState state = VariableState::specified) {
    const int count = static_cast<int>(compounds.size());
    return Array(names::kCompMoleFrac, "", {{0, count, ElementNaming::text, std::move(compounds)}},
                 std::move(fractions), state);
}

inline ObjectData Object(const std::string& name, const std::string& type,
                         std::vector<VariableData> variables = {},
                         std::vector<PortData> ports = {}) {
    ObjectData object;
    object.name = name;
    object.type = type;
    object.variables = std::move(variables);
    object.ports = std::move(ports);
    return object;
}

inline ObjectData Stream(const std::string& name, VariableState state, double temperature_C = 25,
                         double pressure_kPa = 500) {
    return Object(name, words::kMaterialStream,
                  {Real(names::kTemperature, "Temperature", temperature_C, state),
                   Real(names::kPressure, "Pressure", pressure_kPa, state),
                   Composition({"Methane", "Ethane"}, {0.75, 0.25}, state)});
}

inline BasisElement Element(const char* tag, BasisElement::Kind kind, double number = kEmpty,
                            const char* text = "") {
    BasisElement element;
    element.tag = tag;
    element.kind = kind;
    element.number = number;
    element.text = text;
    return element;
}

// Feed -> Valve -> Low -> Heater (Duty) -> Hot, and Other -> Pump -> Pumped beside it.
inline CaseData SmallCase() {
    using Role = PortData::Role;
    constexpr auto kGiven = VariableState::specified;
    constexpr auto kFound = VariableState::calculated;
    CaseData data;
    data.name = "small";
    data.main.objects = {
        Stream("Feed", kGiven),
        Object("Valve", words::kValve, {Real("Pressure Drop", "PressureDifference", 100)},
               {{Role::feed, 0, "Feed"}, {Role::product, 0, "Low"}}),
        Stream("Low", kFound, 24, 400),
        Object("Duty", words::kEnergyStream, {Real(names::kHeatFlow, "EnergyFlow", 1000, kFound)}),
        Object("Heater", words::kHeater, {Real("Duty", "EnergyFlow", 1000, kFound)},
               {{Role::feed, 0, "Low"}, {Role::product, 0, "Hot"}, {Role::energy_in, 0, "Duty"}}),
        Stream("Hot", kFound, 60, 400),
        Stream("Other", kGiven, 20, 100),
        Object("Pump", words::kPump, {}, {{Role::feed, 0, "Other"}, {Role::product, 0, "Pumped"}}),
        Stream("Pumped", kFound, 20.5, 900),
    };
    return data;
}

}  // namespace fixtop::casehost::test
