// SPDX-License-Identifier: Apache-2.0
#include "object_sheet.h"
#include "readers.h"

namespace fixtop::casehost::importer {

namespace {

// More than any simulator's data bank offers in one case.
constexpr std::size_t kMaxCompounds = 4096;

struct ConstantRow {
    const char* element;
    double CompoundData::*field;
    double factor;
};
constexpr ConstantRow kConstants[] = {
    {"Molar_Weight", &CompoundData::molar_mass, 1.0},
    {"Critical_Temperature", &CompoundData::critical_temperature_K, 1.0},
    {"Critical_Pressure", &CompoundData::critical_pressure_kPa, 0.001},
    {"Acentric_Factor", &CompoundData::acentric_factor, 1.0},
    {"Normal_Boiling_Point", &CompoundData::normal_boiling_point_K, 1.0},
};

constexpr std::string_view kReadElsewhere =
    "Type|Name|Formula|Molar_Weight|Critical_Temperature|Critical_Pressure|Acentric_Factor|"
    "Normal_Boiling_Point";

// The number of the equation that is a polynomial in T.
constexpr char kPolynomial[] = "100";

// From J/(kmol K). Other equations than the polynomial stay in `other`.
void ReadHeatCapacity(Reading& reading, XmlNode node, CompoundData& compound) {
    if (node.Child("IdealgasCpEquation").Text() != kPolynomial) return;
    for (const char* element :
         {"Ideal_Gas_Heat_Capacity_Const_A", "Ideal_Gas_Heat_Capacity_Const_B",
          "Ideal_Gas_Heat_Capacity_Const_C", "Ideal_Gas_Heat_Capacity_Const_D",
          "Ideal_Gas_Heat_Capacity_Const_E"}) {
        compound.cp.push_back(ReadNumber(reading, node.Child(element)).value_or(0.0) / 1000.0);
    }
}

CompoundData ReadCompound(Reading& reading, XmlNode node) {
    CompoundData compound;
    compound.name = node.Child("Name").Text();
    compound.formula = node.Child("Formula").Text();
    for (const ConstantRow& row : kConstants) {
        const Number value = ReadNumber(reading, node.Child(row.element));
        if (value) compound.*row.field = *value * row.factor;
    }
    ReadHeatCapacity(reading, node, compound);
    for (XmlNode child : Children(node)) {
        if (child.FirstChild() || child.Text().empty()) continue;
        if (ListHolds(kReadElsewhere, child.Tag())) continue;
        compound.other.emplace(child.Tag(), child.Text());
    }
    return compound;
}

}  // namespace

void ReadCompounds(Reading& reading, XmlNode root, CaseData& data) {
    for (XmlNode node : Children(root.Child("Compounds"))) {
        if (reading.compounds.size() == kMaxCompounds) {
            reading.problems.Error(node, "expected at most " + std::to_string(kMaxCompounds) +
                                             " compounds, found more");
            return;
        }
        data.compounds.push_back(ReadCompound(reading, node));
        const std::string& name = data.compounds.back().name;
        const std::size_t index = reading.compounds.size();
        if (name.empty() || !reading.compound_index.emplace(name, index).second) {
            reading.problems.Error(node, "expected compounds with a Name, each once; found '" +
                                             name + "' again or without");
        }
        reading.compounds.push_back(name);
    }
}

std::string ReadPackageName(XmlNode root) {
    const XmlNode package = root.Child("PropertyPackages").FirstChild();
    for (const char* element : {"Tag", "ComponentName"}) {
        const std::string_view name = package.Child(element).Text();
        if (!name.empty()) return std::string(name);
    }
    return std::string(LastWord(package.Child("Type").Text()));
}

}  // namespace fixtop::casehost::importer
