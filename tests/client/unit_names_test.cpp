// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "fixtop/client.h"

namespace fixtop::client {
namespace {

constexpr char kRaw[] = "appModel.FlowSheetObjects.Streams.Raw Gas";
constexpr char kNeutral[] = "Flowsheet.Stream(Raw Gas)";

class UnitNames : public ::testing::Test {
 protected:
    Node Raw(const std::string& name) const { return plant.At(std::string(kRaw) + '.' + name); }
    Node Neutral(const std::string& name) const {
        return plant.Neutral().At(std::string(kNeutral) + '.' + name);
    }

    Case plant = Case::Open(Case::kDemo);
};

struct Typed {
    const char* unit;
    const char* raw;      // the name of it in the case
    const char* neutral;  // and in the neutral view
    double value;
};

void ExpectRead(const Node& node, const Typed& typed, const char* shown) {
    const Reading reading = node.Read(typed.unit);
    EXPECT_EQ(shown, reading.unit) << typed.unit;
    EXPECT_NEAR(typed.value, reading.value.AsDouble(), 1e-9 * typed.value) << typed.unit;
    EXPECT_EQ("", OtherUnit("value", reading, typed.unit)) << typed.unit;
    EXPECT_NEAR(typed.value, node.Number(typed.unit), 1e-9 * typed.value) << typed.unit;
}

// 30 C are 303.15 K, 86 F and 545.67 R.
TEST_F(UnitNames, temperatures) {
    const Typed rows[] = {
        {"degC", "C", "C", 30},       {"°C", "C", "C", 30},      {"° C", "C", "C", 30},
        {"deg C", "C", "C", 30},      {"℃", "C", "C", 30},       {"celsius", "C", "C", 30},
        {"c", "C", "C", 30},          {"degF", "F", "F", 86},    {"°F", "F", "F", 86},
        {"Fahrenheit", "F", "F", 86}, {"k", "K", "K", 303.15},   {"Kelvin", "K", "K", 303.15},
        {"°K", "K", "K", 303.15},     {"degR", "R", "R", 545.67}};
    for (const Typed& row : rows) {
        ExpectRead(Raw("Temperature"), row, row.raw);
        ExpectRead(Neutral("Temperature"), row, row.neutral);
    }
}

// 6000 kPa are 60 bar, 58.98675 above the atmosphere of 1.01325 bar; a psi is 6.894757293168 kPa,
// and 98.0665 kPa are a kgf/cm2.
TEST_F(UnitNames, pressures_and_those_above_the_atmosphere) {
    const Typed rows[] = {{"bara", "bar", "bar", 60},
                          {"BAR", "bar", "bar", 60},
                          {"bar(a)", "bar", "bar", 60},
                          {"kpa", "kPa", "kPa", 6000},
                          {"barg", "barg", "barg", 58.98675},
                          {"bar(g)", "barg", "barg", 58.98675},
                          {"bar g", "barg", "barg", 58.98675},
                          {"kPa(g)", "kPag", "kPag", 5898.675},
                          {"psig", "psig", "psig", 870.226426381 - 14.6959487755},
                          {"psi", "psia", "psi", 870.226426381},
                          {"psia", "psia", "psi", 870.226426381},
                          {"lbf/in^2", "psia", "psi", 870.226426381},
                          {"kg/cm²", "kg/cm2", "kgf/cm2", 61.182972779},
                          {"kgf/cm2", "kg/cm2", "kgf/cm2", 61.182972779}};
    for (const Typed& row : rows) {
        ExpectRead(Raw("Pressure"), row, row.raw);
        ExpectRead(Neutral("Pressure"), row, row.neutral);
    }
}

// 1000 kmol/h; a pound mole is 0.45359237 kmol.
TEST_F(UnitNames, flows) {
    const Typed rows[] = {{"kgmole/h", "kgmole/h", "kmol/h", 1000},
                          {"kmol/h", "kgmole/h", "kmol/h", 1000},
                          {"kmol/hr", "kgmole/h", "kmol/h", 1000},
                          {"KGMOLE/H", "kgmole/h", "kmol/h", 1000},
                          {"gmol/sec", "mol/s", "mol/s", 1000 / 3.6},
                          {"lbmol/h", "lbmole/hr", "lbmol/h", 1000 / 0.45359237},
                          {"lbmole/hour", "lbmole/hr", "lbmol/h", 1000 / 0.45359237}};
    for (const Typed& row : rows) {
        ExpectRead(Raw("Molar Flow"), row, row.raw);
        ExpectRead(Neutral("MolarFlow"), row, row.neutral);
    }
}

TEST_F(UnitNames, names_of_several_factors_in_any_order) {
    const Node capacity = Neutral("Thermodynamic.MolarHeatCapacity");
    const double expected = capacity.Number("J/mol-K");
    for (const char* unit : {"J/mol/K", "J/(mol K)", "J/(mol·K)", "J/K-mol", "J/gmole.K"}) {
        EXPECT_EQ(expected, capacity.Number(unit)) << unit;
    }
}

TEST_F(UnitNames, a_leading_m_is_milli_or_mega) {
    const Node duty = plant.At("appModel.FlowSheetObjects.UnitOps.E-100.Duty");
    EXPECT_EQ("MW", duty.Read("MW").unit);
    EXPECT_THROW(duty.Read("mW"), Refused);
    EXPECT_THROW(Raw("Pressure").Read("mPa"), Refused);
}

TEST_F(UnitNames, an_unknown_unit_is_answered_with_those_that_there_are) {
    struct {
        Node node;
        const char* unit;
        const char* text;
    } const rows[] = {
        {Raw("Temperature"), "furlong", "no such unit: furlong; expected C, K, F, R"},
        {Raw("Temperature"), "kPa", "no such unit: kPa; expected C, K, F, R"},
        {Neutral("Temperature"), "furlong", "no such unit: furlong; expected C, K, F, R"},
        {Raw("Molar Flow"), "kg/h",
         "no such unit: kg/h; expected kgmole/h, kgmole/s, mol/s, mol/h, lbmole/hr"},
        {Neutral("MolarFlow"), "kg/h",
         "no such unit: kg/h; expected kmol/h, kmol/s, mol/s, mol/h, lbmol/h"}};
    for (const auto& row : rows) {
        try {
            row.node.Read(row.unit);
            FAIL() << "taken: " << row.unit;
        } catch (const Refused& refused) {
            EXPECT_EQ(row.text, refused.Text());
        }
    }
}

TEST_F(UnitNames, stores_take_them) {
    Raw("Temperature").Store("86 °F");
    EXPECT_DOUBLE_EQ(30, Raw("Temperature").Number("C"));
    Neutral("Temperature").Store("40 deg C");
    EXPECT_DOUBLE_EQ(40, Raw("Temperature").Number("C"));
    Raw("Pressure").Store(50, "bar(g)");
    EXPECT_DOUBLE_EQ(5101.325, Raw("Pressure").Number("kPa"));
    Neutral("Pressure").Store("0 psig");
    EXPECT_NEAR(101.325, Raw("Pressure").Number("kPa"), 1e-9);
    EXPECT_EQ("bar", Raw("Pressure").ShowIn("bara"));
}

TEST_F(UnitNames, a_selection_keeps_the_name_of_the_case) {
    Selection selection(plant.Top());
    EXPECT_TRUE(selection.Add(Raw("Temperature"), "degF"));
    EXPECT_EQ(std::vector<std::string>{"F"}, selection.Units());
    const std::vector<std::string> typed = {"313.15"};
    EXPECT_EQ(std::vector<std::string>{""}, selection.Store(std::span(typed), "kelvin"));
    EXPECT_DOUBLE_EQ(40, Raw("Temperature").Number("C"));
}

// Else a name that is typed could be read as another unit of the quantity.
TEST_F(UnitNames, each_unit_of_the_case_is_itself_alone) {
    std::map<std::string, Node> quantities;
    for (const char* list : {"Streams", "UnitOps", "Utilities"}) {
        const std::string all = std::string("appModel.FlowSheetObjects.") + list + ".*.*";
        for (const Node& node : plant.Matches(all)) {
            const std::string quantity = node.Attribute("dimension").ToText();
            if (node.Type() == "Real" && !quantity.empty()) quantities.emplace(quantity, node);
        }
    }
    EXPECT_LT(6, quantities.size());
    for (const auto& [quantity, node] : quantities) {
        std::istringstream units(node.Attribute("uom_options").ToText());
        for (std::string unit; std::getline(units, unit);) {
            EXPECT_EQ(unit, node.Read(' ' + unit + ' ').unit) << quantity;
        }
    }
}

}  // namespace
}  // namespace fixtop::client
