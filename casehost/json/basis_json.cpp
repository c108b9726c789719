// SPDX-License-Identifier: Apache-2.0
#include "json/basis_json.h"

#include "json/fields.h"
#include "json/words.h"

namespace fixtop::casehost::json {

namespace {

using Kind = BasisElement::Kind;

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

double NumberOrNull(Tree& tree, const JsonNode& node) {
    return node.kind == JsonNode::Kind::null ? kEmpty : NumberOf(tree, node);
}

std::string TextOrNull(Tree& tree, const JsonNode& node) {
    return node.kind == JsonNode::Kind::null ? std::string() : TextOf(tree, node);
}

BasisColumn ReadColumn(Tree& tree, const JsonNode& node) {
    BasisColumn column;
    Fields fields(tree, node);
    column.name = fields.RequiredText("name");
    if (column.name == kObjectColumn) {
        column.objects = ReadAll(tree, fields.Array("objects"), TextOrNull);
    } else {
        column.numbers = ReadAll(tree, fields.Array("numbers"), NumberOrNull);
    }
    fields.Done();
    return column;
}

void ReadVariable(Fields& fields, BasisElement& element) {
    element.number = fields.Number("number");
    element.quantity = fields.Quantity("quantity");
    element.adjustable = fields.Flag("adjustable", false);
    element.fixed = fields.Flag("fixed", false);
    const bool calculated = fields.Flag("calculated", false);
    if (element.number == kEmpty) return;
    element.state = calculated ? VariableState::calculated : VariableState::specified;
}

BasisElement ReadElement(Tree& tree, const JsonNode& node) {
    BasisElement element;
    Fields fields(tree, node);
    element.tag = fields.RequiredText("tag");
    element.kind = fields.OneOf("kind", kElementWords, Kind::text);
    switch (element.kind) {
        case Kind::group:
            element.elements = ReadAll(tree, fields.Array("elements"), ReadElement);
            break;
        case Kind::table:
            element.columns = ReadAll(tree, fields.Array("columns"), ReadColumn);
            break;
        case Kind::variable:
            ReadVariable(fields, element);
            break;
        case Kind::number:
            element.number = fields.Number("number");
            element.quantity = fields.Quantity("quantity");
            break;
        case Kind::custom:
            element.number = fields.Number("number");
            element.text = fields.Text("text");
            break;
        case Kind::object:
            if (const JsonNode* path = fields.Find("object")) {
                element.text = TextOrNull(tree, *path);
            }
            break;
        case Kind::text:
        case Kind::document:
            element.text = fields.Text("text");
            break;
        case Kind::status:
            break;
    }
    fields.Done();
    return element;
}

void WriteColumns(JsonText& text, const std::vector<BasisColumn>& columns) {
    WriteLine(text, "[]", columns, [&](const BasisColumn& column) {
        text.Raw("{");
        text.Key("name", column.name);
        if (column.name == kObjectColumn) {
            text.Member("objects");
            WriteLine(text, "[]", column.objects,
                      [&](const std::string& path) { text.TextOrNull(path); });
        } else {
            text.Member("numbers", column.numbers);
        }
        text.Raw("}");
    });
}

void WriteElement(JsonText& text, const BasisElement& element, int depth) {
    text.Raw("{");
    text.Key("tag", element.tag);
    text.Member("kind", Word(kElementWords, element.kind));
    if (element.kind == Kind::group) {
        text.Member("elements"), WriteBasis(text, element.elements, depth);
    }
    if (element.kind == Kind::table) text.Member("columns"), WriteColumns(text, element.columns);
    if (element.kind == Kind::object)
        text.Member("object"), text.TextOrNull(element.text);
    else if (!element.text.empty())
        text.Member("text", element.text);
    if (element.number != kEmpty) text.Member("number", element.number);
    if (!element.quantity.empty()) text.Member("quantity", element.quantity);
    if (element.state == VariableState::calculated) text.Member("calculated", true);
    if (element.adjustable) text.Member("adjustable", true);
    if (element.fixed) text.Member("fixed", true);
    text.Raw("}");
}

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
            compound.other[std::string(each->key)] = TextOf(tree, *each);
        }
    }
    fields.Done();
    return compound;
}

void WriteCompound(JsonText& text, const CompoundData& compound) {
    text.Raw("{");
    text.Key("name", compound.name);
    text.Member("formula", compound.formula);
    for (const Constant& each : kConstants) text.Member(each.name, compound.*each.value);
    text.Member("cp", compound.cp);
    text.Member("other");
    WriteLine(text, "{}", compound.other,
              [&](const auto& each) { text.Key(each.first, each.second); });
    text.Raw("}");
}

std::vector<BasisElement> ReadBasis(Tree& tree, const JsonNode& array) {
    return ReadAll(tree, &array, ReadElement);
}

void WriteBasis(JsonText& text, const std::vector<BasisElement>& elements, int depth) {
    WriteLines(text, "[]", elements, depth,
               [&](const BasisElement& each) { WriteElement(text, each, depth + 1); });
}

}  // namespace fixtop::casehost::json
