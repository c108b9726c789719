// SPDX-License-Identifier: Apache-2.0
#include "json/compound_json.h"

#include "json/fields.h"

namespace fixtop::casehost::json {

namespace {

struct Constant {
    const char* name;
    double CompoundData::*value;
};
constexpr Constant kConstants[] = {
    {"molarMass", &CompoundData::molar_mass},
    {"criticalTemperature_K", &CompoundData::critical_temperature_K},
    {"criticalPressure_kPa", &CompoundData::critical_pressure_kPa},
    {"acentricFactor", &CompoundData::acentric_factor},
    {"normalBoilingPoint_K", &CompoundData::normal_boiling_point_K},
    {"liquidMolarVolume", &CompoundData::liquid_molar_volume},
};

}  // namespace

CompoundData ReadCompound(Tree& tree, const JsonNode& node) {
    CompoundData compound;
    Fields fields(tree, node);
    compound.name = fields.RequiredText("name");
    compound.formula = fields.Text("formula");
    for (const Constant& each : kConstants) compound.*each.value = fields.Number(each.name);
    compound.cp = ReadAll(tree, fields.Array("cp"), NumberOf);
    if (const JsonNode* other = fields.Object("other")) {
        for (const JsonNode* each = other->first; each; each = each->next) {
            compound.other[*each->key] = TextOf(tree, *each);
        }
    }
    fields.Done();
    return compound;
}

void WriteCompound(JsonText& text, const CompoundData& compound) {
    text.Raw("{");
    text.Key("name");
    text.Text(compound.name);
    text.Member("formula");
    text.Text(compound.formula);
    for (const Constant& each : kConstants) {
        text.Member(each.name);
        text.Number(compound.*each.value);
    }
    text.Member("cp");
    WriteLine(text, "[]", compound.cp, [&](double number) { text.Number(number); });
    text.Member("other");
    WriteLine(text, "{}", compound.other, [&](const auto& each) {
        text.Key(each.first);
        text.Text(each.second);
    });
    text.Raw("}");
}

}  // namespace fixtop::casehost::json
