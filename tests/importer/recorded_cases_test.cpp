// SPDX-License-Identifier: Apache-2.0
// Recorded cases against what an independent script read out of them, in the units of the file.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "case_reading.h"
#include "casehost/importer.h"

namespace fixtop::casehost::test {

namespace {

std::string CasesFolder() {
    const char* from_environment = std::getenv("FIXTOP_CASES");
    return std::string(from_environment ? from_environment : FIXTOP_CASES) + "/real/";
}

// Counted in the documents with another reader.
struct RecordedCase {
    const char* name;
    std::size_t objects;
    std::size_t compounds;
    std::size_t reactions;
    std::size_t connections;
    const char* title;
};

const RecordedCase kCases[] = {
    {"ammonia-synthesis-single-pass", 16, 3, 1, 15, "AmmoniaSynthesis"},
    {"benzene-toluene-distillation", 10, 3, 0, 9, "BenzeneTolueneDistillation"},
    {"biogas-to-grid", 12, 6, 0, 11, "BiogasToGrid"},
    {"natural-gas-dew-point-control", 17, 6, 0, 17, "NaturalGasDewPoint"},
    {"steam-methane-reforming-h2", 21, 5, 0, 20, "SteamMethaneReformer"},
};

void PrintTo(const RecordedCase& recorded, std::ostream* out) {
    *out << recorded.name;
}

// Where the case has a property of the truth file, and how the number goes back into the file's
// unit. A name that ends in ':' stands for a label behind it.
struct Mapping {
    const char* type;
    const char* property;
    const char* variable;
    double (*to_file)(double);
};

double Same(double v) {
    return v;
}
double Kelvin(double celsius) {
    return celsius + 273.15;
}
double Pascal(double kPa) {
    return kPa * 1000.0;
}
double MolPerSecond(double kgmole_h) {
    return kgmole_h / 3.6;
}
double KgPerSecond(double kg_h) {
    return kg_h / 3600.0;
}
double Kilowatt(double kJ_h) {
    return kJ_h / 3600.0;
}
double MinusKilowatt(double kJ_h) {
    return -kJ_h / 3600.0;
}
double WattPerM2K(double kJ_h_m2_C) {
    return kJ_h_m2_C / 3.6;
}

const Mapping kMappings[] = {
    {"MaterialStream", "T", "Temperature", Kelvin},
    {"MaterialStream", "P", "Pressure", Pascal},
    {"MaterialStream", "molar flow", "Molar Flow", MolPerSecond},
    {"MaterialStream", "mass flow", "Mass Flow", KgPerSecond},
    {"MaterialStream", "vapour fraction", "Vapour Fraction", Same},
    {"MaterialStream", "x:", "Comp Mole Frac", Same},
    {"EnergyStream", "energy flow", "Heat Flow", Kilowatt},
    {"Compressor", "power", "Duty", Kilowatt},
    {"Compressor", "outlet pressure", "Product Pressure", Pascal},
    {"Compressor", "adiabatic efficiency", "Adiabatic Efficiency", Same},
    {"Compressor", "pressure ratio", "Pressure Ratio", Same},
    {"Heater", "duty", "Duty", Kilowatt},
    {"Heater", "outlet temperature", "Product Temperature", Kelvin},
    {"Heater", "pressure drop", "Pressure Drop", Pascal},
    {"Cooler", "duty", "Duty", Kilowatt},
    {"Cooler", "outlet temperature", "Product Temperature", Kelvin},
    {"Cooler", "pressure drop", "Pressure Drop", Pascal},
    {"Valve", "outlet pressure", "Product Pressure", Pascal},
    {"Valve", "pressure drop", "Pressure Drop", Pascal},
    {"Valve", "temperature change", "Temperature Change", Same},
    {"HeatExchanger", "duty", "Duty", Kilowatt},
    {"HeatExchanger", "area", "Area", Same},
    {"HeatExchanger", "overall coefficient", "Overall Heat Transfer Coefficient", WattPerM2K},
    {"HeatExchanger", "LMTD", "LMTD", Same},
    {"Vessel", "duty", "Duty", Kilowatt},
    {"DistillationColumn", "stages", "Number of Stages", Same},
    {"DistillationColumn", "reflux ratio", "Reflux Ratio", Same},
    {"DistillationColumn", "condenser duty", "Condenser Duty", Kilowatt},
    // The file counts heat into a reboiler as negative, the case as positive.
    {"DistillationColumn", "reboiler duty", "Reboiler Duty", MinusKilowatt},
    {"Reactor_Equilibrium", "duty", "Duty", Kilowatt},
    {"Reactor_Equilibrium", "outlet temperature", "Product Temperature", Kelvin},
    {"Reactor_Equilibrium", "extent:", "Reaction Extent", MolPerSecond},
    {"Reactor_Gibbs", "duty", "Duty", Kilowatt},
    {"Reactor_Gibbs", "outlet temperature", "Product Temperature", Kelvin},
    {"Reactor_Gibbs", "final Gibbs energy", "Final Gibbs Energy", Kilowatt},
    {"Reactor_AnaerobicDigester", "volume", "Volume", Same},
    {"Reactor_AnaerobicDigester", "residence time", "Hydraulic Residence Time", Same},
    {"Reactor_AnaerobicDigester", "COD removal", "COD Removal Fraction", Same},
    {"Reactor_AnaerobicDigester", "biogas flow", "Biogas Molar Flow", MolPerSecond},
    {"UnitOp_BiogasUpgrader", "H2S removal", "H2S Removal Fraction", Same},
    {"UnitOp_BiogasUpgrader", "CO2 removal", "CO2 Removal Fraction", Same},
    {"UnitOp_BiogasUpgrader", "upgraded mass flow", "Upgraded Gas Mass Flow", KgPerSecond},
    {"UnitOp_BiogasUpgrader", "CH4 mole fraction", "Upgraded Gas CH4 Mole Fraction", Same},
    {"Recycle", "iterations", "Iterations", Same},
    {"Recycle", "error:Temperature", "Temperature Error", Same},
    {"Recycle", "error:MassFlow", "Mass Flow Error", KgPerSecond},
};

// Properties that are words.
struct WordMapping {
    const char* type;
    const char* property;
    const char* variable;
};

const WordMapping kWordMappings[] = {
    {"Heater", "calculation mode", "Calculation Mode"},
    {"Cooler", "calculation mode", "Calculation Mode"},
    {"Valve", "calculation mode", "Calculation Mode"},
    {"Vessel", "inlet pressure rule", "Outlet Pressure Assignment"},
    {"Vessel", "override temperature", "Override Temperature"},
    {"Mixer", "inlet pressure rule", "Outlet Pressure Assignment"},
    {"Reactor_Equilibrium", "operation mode", "Operation Mode"},
    {"Reactor_Gibbs", "operation mode", "Operation Mode"},
    {"Recycle", "converged", "Converged"},
};

// Words that the case shows in the terms of its own unit operations.
const std::map<std::string, std::string> kShownAs = {{"Minimum", "Set Outlet to Lowest Inlet"}};

const std::map<std::string, std::string> kTypes = {
    {"MaterialStream", "MaterialStreamObject"},
    {"EnergyStream", "EnergyStreamObject"},
    {"Compressor", "CompressorObject"},
    {"Heater", "HeaterOpObject"},
    {"Cooler", "CoolerOpObject"},
    {"Valve", "ValveOpObject"},
    {"HeatExchanger", "HeatExOpObject"},
    {"Vessel", "FlashTankObject"},
    {"Mixer", "MixerOpObject"},
    {"DistillationColumn", "DistillationObject"},
    {"Reactor_Equilibrium", "EquilibriumReactorOpObject"},
    {"Reactor_Gibbs", "GibbsReactorOpObject"},
    {"Reactor_AnaerobicDigester", "Reactor_AnaerobicDigester"},
    {"UnitOp_BiogasUpgrader", "UnitOp_BiogasUpgrader"},
    {"Recycle", "Recycle"},
};

struct TruthRow {
    std::string tag, type, property, value, unit;
};

std::vector<TruthRow> ReadTruth(const std::string& path) {
    std::ifstream file(path);
    std::vector<TruthRow> rows;
    std::string line;
    std::getline(file, line);
    while (std::getline(file, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        std::istringstream fields(line);
        TruthRow row;
        std::getline(fields, row.tag, ',');
        std::getline(fields, row.type, ',');
        std::getline(fields, row.property, ',');
        std::getline(fields, row.value, ',');
        std::getline(fields, row.unit, ',');
        rows.push_back(row);
    }
    return rows;
}

const Mapping* FindMapping(const TruthRow& row, std::string& label) {
    for (const Mapping& mapping : kMappings) {
        const std::string property = mapping.property;
        if (row.type != mapping.type) continue;
        if (row.property == property) return &mapping;
        if (property.back() == ':' && row.property.starts_with(property)) {
            label = row.property.substr(property.size());
            return &mapping;
        }
    }
    return nullptr;
}

void CheckNumber(const TruthRow& row, const Mapping& mapping, const ValueData* value) {
    ASSERT_NE(value, nullptr) << mapping.variable;
    if (row.value.empty()) {
        EXPECT_EQ(value->number, -32767.0);
        EXPECT_EQ(value->state, VariableState::missing);
        return;
    }
    const double expected = std::stod(row.value);
    EXPECT_NEAR(mapping.to_file(value->number), expected, 1e-12 * std::abs(expected));
    EXPECT_NE(value->state, VariableState::missing);
}

void CheckWord(const TruthRow& row, const ObjectData& object) {
    if (row.property == "calculated") {
        EXPECT_EQ(object.status == ObjectStatus::ok, row.value == "true");
        return;
    }
    for (const WordMapping& mapping : kWordMappings) {
        if (row.type != mapping.type || row.property != mapping.property) continue;
        const VariableData* variable = FindVariable(&object, mapping.variable);
        ASSERT_NE(variable, nullptr) << mapping.variable;
        const auto shown = kShownAs.find(row.value);
        EXPECT_EQ(Shown(*variable), shown == kShownAs.end() ? row.value : shown->second);
        return;
    }
    ADD_FAILURE() << "no variable is known for this row";
}

class RecordedCases : public testing::TestWithParam<RecordedCase> {
 protected:
    void SetUp() override {
        const std::string path = CasesFolder() + GetParam().name + ".dwxmz";
        if (!std::filesystem::exists(path)) GTEST_SKIP() << "no recorded case at " << path;
        result = ReadDwxmz(path);
        ASSERT_NE(result.data, nullptr) << Lines(result);
        truth = ReadTruth(CasesFolder() + GetParam().name + ".csv");
        ASSERT_FALSE(truth.empty());
    }
    ReadResult result;
    std::vector<TruthRow> truth;
};

TEST_P(RecordedCases, EveryRowOfTruthReadsBack) {
    for (const TruthRow& row : truth) {
        SCOPED_TRACE(row.tag + "," + row.type + "," + row.property + "," + row.value);
        const ObjectData* object = FindObject(*result.data, row.tag);
        ASSERT_NE(object, nullptr);
        std::string label;
        if (const Mapping* mapping = FindMapping(row, label)) {
            CheckNumber(row, *mapping, FindValue(object, mapping->variable, label));
        } else {
            CheckWord(row, *object);
        }
    }
}

TEST_P(RecordedCases, ObjectsCompoundsAndConnectionsAreAllThere) {
    const CaseData& data = *result.data;
    EXPECT_EQ(Lines(result), "");
    EXPECT_EQ(data.name, GetParam().title);
    EXPECT_TRUE(data.recorded);
    EXPECT_EQ(data.source, "dwxmz");
    EXPECT_EQ(data.property_package, "Peng-Robinson (PR)");
    EXPECT_EQ(data.compounds.size(), GetParam().compounds);
    EXPECT_EQ(data.reactions.size(), GetParam().reactions);
    // The flowsheet around a column is none of the file's objects.
    const auto is_sheet = [](const ObjectData& each) { return each.type == "TemplateOpObject"; };
    const auto sheets = std::count_if(data.main.objects.begin(), data.main.objects.end(), is_sheet);
    EXPECT_EQ(data.main.objects.size() - static_cast<std::size_t>(sheets), GetParam().objects);
    std::map<std::string, std::string> types;
    for (const TruthRow& row : truth) types[row.tag] = row.type;
    EXPECT_EQ(types.size(), GetParam().objects);
    std::size_t connections = 0;
    for (const ObjectData& object : data.main.objects) {
        if (is_sheet(object)) continue;
        EXPECT_EQ(object.type, kTypes.at(types[object.name])) << object.name;
        EXPECT_EQ(object.status, ObjectStatus::ok) << object.name;
        connections += object.ports.size();
        for (const PortData& port : object.ports) {
            const ObjectData* stream = FindObject(data, port.stream);
            ASSERT_NE(stream, nullptr) << object.name << " " << port.stream;
            const bool energy =
                port.role == PortData::Role::energy_in || port.role == PortData::Role::energy_out;
            EXPECT_EQ(stream->type, energy ? "EnergyStreamObject" : "MaterialStreamObject");
        }
    }
    EXPECT_EQ(connections, GetParam().connections);
}

TEST_P(RecordedCases, ValuesFillTheirDimensions) {
    for (const ObjectData& object : result.data->main.objects) {
        std::set<std::string> names;
        for (const VariableData& variable : object.variables) {
            EXPECT_TRUE(names.insert(variable.spec->name).second)
                << object.name << " has " << variable.spec->name << " twice";
            std::size_t count = 1;
            for (const DimensionData& dimension : variable.spec->dimensions) {
                const bool labelled = dimension.naming != ElementNaming::number;
                EXPECT_EQ(dimension.labels.size(), labelled ? dimension.count : 0u);
                count *= dimension.count;
            }
            EXPECT_EQ(variable.values.size(), count) << object.name << " " << variable.spec->name;
        }
    }
}

double NumberOf(const ObjectData& object, const char* name) {
    const ValueData* value = FindValue(&object, name);
    return value ? value->number : -32767.0;
}

TEST_P(RecordedCases, StreamsAgreeWithThemselves) {
    int checked = 0;
    for (const ObjectData& object : result.data->main.objects) {
        if (object.type != "MaterialStreamObject") continue;
        const double flow_kgmole_h = NumberOf(object, "Molar Flow");
        const double mass_flow_kg_h = NumberOf(object, "Mass Flow");
        if (flow_kgmole_h <= 0) continue;
        SCOPED_TRACE(object.name);
        ++checked;
        double sum = 0, sum_flows = 0;
        for (const ValueData& x : FindVariable(&object, "Comp Mole Frac")->values) sum += x.number;
        for (const ValueData& n : FindVariable(&object, "Comp Molar Flow")->values) {
            sum_flows += n.number;
        }
        EXPECT_NEAR(sum, 1.0, 1e-12);
        EXPECT_NEAR(sum_flows, flow_kgmole_h, 1e-12 * flow_kgmole_h);
        EXPECT_NEAR(mass_flow_kg_h, flow_kgmole_h * NumberOf(object, "Molecular Weight"),
                    1e-12 * mass_flow_kg_h);
        EXPECT_NEAR(NumberOf(object, "Heat Flow"),
                    flow_kgmole_h * NumberOf(object, "Molar Enthalpy"),
                    1e-6 * std::abs(NumberOf(object, "Heat Flow")));
    }
    EXPECT_GT(checked, 0);
}

TEST_P(RecordedCases, PhasesMakeUpTheirStream) {
    for (const ObjectData& object : result.data->main.objects) {
        if (object.type != "MaterialStreamObject") continue;
        SCOPED_TRACE(object.name);
        const double vapour_fraction = NumberOf(object, "Vapour Fraction");
        const ValueData* vapour = FindValue(&object, "Phase Fraction", "Vapour Phase");
        const ValueData* liquid = FindValue(&object, "Phase Fraction", "Total Liquid Phase");
        EXPECT_EQ(vapour != nullptr, vapour_fraction > 0);
        if (vapour) {
            EXPECT_EQ(vapour->number, vapour_fraction);
        }
        if (vapour_fraction == -32767.0) {
            EXPECT_EQ(liquid, nullptr);
            continue;
        }
        const double total = (vapour ? vapour->number : 0) + (liquid ? liquid->number : 0);
        EXPECT_NEAR(total, 1.0, 1e-9);
        const VariableData& fractions = *FindVariable(&object, "Phase Comp Mole Frac");
        const std::size_t compounds = GetParam().compounds;
        for (std::size_t row = 0; row < fractions.values.size(); row += compounds) {
            double sum = 0;
            for (std::size_t i = 0; i < compounds; ++i) sum += fractions.values[row + i].number;
            EXPECT_NEAR(sum, 1.0, 1e-9) << fractions.spec->dimensions[0].labels[row / compounds];
        }
    }
}

// The sign with which the duty of a type enters the process.
const std::map<std::string, double> kDutySigns = {
    {"HeaterOpObject", 1.0}, {"CoolerOpObject", -1.0}, {"CompressorObject", 1.0}};

TEST_P(RecordedCases, DutiesCloseTheHeatBalance) {
    for (const ObjectData& object : result.data->main.objects) {
        const auto sign = kDutySigns.find(object.type);
        if (sign == kDutySigns.end()) continue;
        double gain_kJ_h = 0;
        for (const PortData& port : object.ports) {
            const ObjectData& stream = *FindObject(*result.data, port.stream);
            if (port.role == PortData::Role::product) gain_kJ_h += NumberOf(stream, "Heat Flow");
            if (port.role == PortData::Role::feed) gain_kJ_h -= NumberOf(stream, "Heat Flow");
        }
        const double duty_kJ_h = NumberOf(object, "Duty");
        EXPECT_NEAR(sign->second * duty_kJ_h, gain_kJ_h, 1e-4 * std::abs(gain_kJ_h)) << object.name;
    }
}

INSTANTIATE_TEST_SUITE_P(All, RecordedCases, testing::ValuesIn(kCases),
                         [](const testing::TestParamInfo<RecordedCase>& row) {
                             std::string name = row.param.name;
                             for (char& c : name) c = c == '-' ? '_' : c;
                             return name;
                         });

class RecordedColumn : public testing::Test {
 protected:
    void SetUp() override {
        const std::string path = CasesFolder() + "benzene-toluene-distillation.dwxmz";
        if (!std::filesystem::exists(path)) GTEST_SKIP() << "no recorded case at " << path;
        result = ReadDwxmz(path);
        ASSERT_NE(result.data, nullptr) << Lines(result);
        column = FindObject(*result.data, "T-101");
        ASSERT_NE(column, nullptr);
    }
    double At(const char* name, std::size_t index) const {
        return FindVariable(column, name)->values.at(index).number;
    }
    ReadResult result;
    const ObjectData* column = nullptr;
};

TEST_F(RecordedColumn, HasItsProfiles) {
    EXPECT_NEAR(At("Stage Temperature", 0), 352.8114743260277 - 273.15, 1e-12);
    EXPECT_DOUBLE_EQ(At("Stage Pressure", 29), 101.325);
    EXPECT_DOUBLE_EQ(At("Stage Vapour Molar Flow", 1), 200 * 3.6);
    EXPECT_DOUBLE_EQ(At("Stage Liquid Molar Flow", 28), 249.26 * 3.6);
    EXPECT_DOUBLE_EQ(At("Stage Liquid Draw Molar Flow", 0), 50 * 3.6);
    EXPECT_EQ(At("Stage Liquid Mole Frac", 3 * 1 + 1), 0.000245973);
    EXPECT_EQ(At("Stage Vapour Mole Frac", 3 * 0 + 0), 0.999962);
    EXPECT_EQ(At("Stage K Value", 3 * 2 + 2), 3.6169);
    const VariableSpec& matrix = *FindVariable(column, "Stage Vapour Mole Frac")->spec;
    ASSERT_EQ(matrix.dimensions.size(), 2u);
    EXPECT_EQ(matrix.dimensions[0].labels.front(), "Condenser");
    EXPECT_EQ(matrix.dimensions[0].labels.back(), "Reboiler");
    EXPECT_EQ(matrix.dimensions[1].labels,
              (std::vector<std::string>{"Benzene", "Toluene", "Water"}));
    EXPECT_EQ(At("Number of Trays", 0), 28);
}

TEST_F(RecordedColumn, HasItsSpecificationsAndStreams) {
    EXPECT_EQ(Shown(*FindVariable(column, "Condenser Spec Type")), "Stream_Ratio");
    EXPECT_EQ(At("Condenser Spec Value", 0), 3);
    EXPECT_EQ(Shown(*FindVariable(column, "Reboiler Spec Type")), "Product_Molar_Flow_Rate");
    EXPECT_DOUBLE_EQ(At("Reboiler Spec Value", 0), 180);
    EXPECT_EQ(FindValue(column, "Feed Stage", "preheated feed")->number, 15);
    EXPECT_EQ(FindValue(column, "Product Stage", "benzene product")->number, 0);
    EXPECT_EQ(FindValue(column, "Product Stage", "toluene product")->number, 29);
    using Role = PortData::Role;
    const std::vector<PortData> expected = {{Role::product, 0, "benzene product"},
                                            {Role::product, 1, "toluene product"},
                                            {Role::energy_out, 10, "cond duty"},
                                            {Role::feed, 0, "preheated feed"},
                                            {Role::energy_in, 10, "reb duty"}};
    EXPECT_EQ(column->ports.size(), expected.size());
    for (const PortData& port : expected) {
        EXPECT_NE(std::find(column->ports.begin(), column->ports.end(), port), column->ports.end())
            << port.stream;
    }
}

class RecordedColumnSheet : public RecordedColumn {
 protected:
    void SetUp() override {
        RecordedColumn::SetUp();
        if (!column) return;
        const ObjectData* around = FindObject(*result.data, "T-101 Flowsheet");
        ASSERT_NE(around, nullptr);
        ASSERT_NE(around->sub_flowsheet, nullptr);
        sheet = around->sub_flowsheet.get();
    }
    const ObjectData* Part(const std::string& name) const {
        for (const ObjectData& object : sheet->objects) {
            if (object.name == name) return &object;
        }
        ADD_FAILURE() << "no " << name;
        return nullptr;
    }
    double At(const std::string& part, const char* name, std::size_t index = 0) const {
        return FindVariable(Part(part), name)->values.at(index).number;
    }
    static std::vector<std::string> TextsOf(const ObjectData* object, const char* name) {
        std::vector<std::string> texts;
        for (const ValueData& value : FindVariable(object, name)->values) {
            texts.push_back(value.text);
        }
        return texts;
    }
    using Texts = std::vector<std::string>;
    const FlowsheetData* sheet = nullptr;
};

TEST_F(RecordedColumnSheet, HasItsVessels) {
    EXPECT_EQ(TextsOf(column, "Vessels"),
              (Texts{"T-101 Flowsheet/Main Tower", "T-101 Flowsheet/Condenser",
                     "T-101 Flowsheet/Reboiler"}));
    EXPECT_EQ(TextsOf(Part("Condenser"), "Distillate Stream"), Texts{"/benzene product"});
    EXPECT_EQ(TextsOf(Part("Condenser"), "Condenser Type"), Texts{"Total"});
    EXPECT_DOUBLE_EQ(At("Condenser", "Reflux Molar Flow"), 150 * 3.6);
    EXPECT_NEAR(At("Condenser", "Distillate Molar Flow"), 50 * 3.6, 1e-6);
    EXPECT_NEAR(At("Condenser", "Duty"), 6062.091578757495 * 3600, 1e-6);
    // 150 mol/s of the liquid on stage 0, which is benzene but for 6e-5 of toluene.
    EXPECT_NEAR(At("Condenser", "Reflux Mass Flow"), 540 * 78.11, 540 * 0.01);
    EXPECT_EQ(TextsOf(Part("Reboiler"), "Liquid Product Stream"), Texts{"/toluene product"});
    EXPECT_NEAR(At("Reboiler", "Liquid Molar Flow"), 50 * 3.6, 1e-6);
    EXPECT_NEAR(At("Reboiler", "Vessel Pressure"), 101.325, 1e-12);
    EXPECT_EQ(At("Main Tower", "Number of Stages"), 28);
}

TEST_F(RecordedColumnSheet, HasItsFeedAtItsStage) {
    EXPECT_EQ(TextsOf(column, "Inlets"), (Texts{"/preheated feed", ""}));
    EXPECT_EQ(TextsOf(column, "Inlet Stream Stages"), Texts{"T-101 Flowsheet/Inlet Stage 15"});
    EXPECT_EQ(TextsOf(Part("Inlet Stage 15"), "Stage Stream Names"), Texts{"preheated feed"});
    EXPECT_EQ(At("Inlet Stage 15", "Stage Number"), 15);
    EXPECT_DOUBLE_EQ(FindVariable(column, "Feed Stream Comp Molar Flows")->values[0].number, 360);
    EXPECT_EQ(TextsOf(FindObject(*result.data, "preheated feed"), "Object Name"),
              Texts{"preheated feed"});
}

TEST_F(RecordedColumnSheet, EveryStageIsInBalance) {
    const auto at = [&](const char* name, int stage) {
        const double value = At("Profiles", name, static_cast<std::size_t>(stage));
        return value == kEmpty ? 0 : value;
    };
    for (int stage = 0; stage < 30; ++stage) {
        double in = at("Stage Net Molar Feed", stage);
        double out = at("Stage Net Molar Draw", stage) + at("Stage Vapour Molar Flow", stage);
        if (stage > 0) in += at("Stage Liquid Molar Flow", stage - 1);
        if (stage < 29) in += at("Stage Vapour Molar Flow", stage + 1);
        if (stage < 29) out += at("Stage Liquid Molar Flow", stage);
        // The file's flows have six digits.
        EXPECT_NEAR(out, in, 0.01) << stage;
    }
    EXPECT_EQ(At("Profiles", "Stage Net Molar Feed", 14), kEmpty);
    EXPECT_EQ(At("Profiles", "Comp Frac vs Stage", 3 * 1 + 1), 0.000245973);
}

TEST_F(RecordedColumnSheet, HasItsSpecifications) {
    EXPECT_EQ(TextsOf(Part("Condenser Spec"), "Specification Type"), Texts{"RefluxRatio"});
    EXPECT_EQ(TextsOf(Part("Reboiler Spec"), "Specification Type"), Texts{"BottomsRate"});
    EXPECT_DOUBLE_EQ(At("Reboiler Spec", "Specified Value"), 180);
}

class RecordedReaction : public testing::Test {
 protected:
    void SetUp() override {
        const std::string path = CasesFolder() + "ammonia-synthesis-single-pass.dwxmz";
        if (!std::filesystem::exists(path)) GTEST_SKIP() << "no recorded case at " << path;
        result = ReadDwxmz(path);
        ASSERT_NE(result.data, nullptr) << Lines(result);
    }
    ReadResult result;
};

TEST_F(RecordedReaction, HasStoichiometryHeatAndLimits) {
    ASSERT_EQ(result.data->reactions.size(), 1u);
    const ObjectData* reaction = &result.data->reactions[0];
    EXPECT_EQ(reaction->name, "R_NH3");
    EXPECT_EQ(reaction->type, "EquilibriumRxnObject");
    EXPECT_EQ(Shown(*FindVariable(reaction, "ReactionType")), "EquilibriumRxnObject");
    EXPECT_EQ(Shown(*FindVariable(reaction, "Base Component")), "Ammonia");
    EXPECT_EQ(Shown(*FindVariable(reaction, "Equation")), "N2 + 3H2 <--> 2NH3");
    EXPECT_EQ(Shown(*FindVariable(reaction, "Reaction Phase")), "Vapor");
    EXPECT_EQ(FindValue(reaction, "Stoichiometric Coefficient", "Hydrogen")->number, -3);
    EXPECT_EQ(FindValue(reaction, "Stoichiometric Coefficient", "Ammonia")->number, 2);
    EXPECT_NEAR(FindValue(reaction, "Reaction Heat")->number, -45898, 1e-9);
    EXPECT_NEAR(FindValue(reaction, "Maximum Temperature")->number, 1726.85, 1e-12);
}

TEST_F(RecordedReaction, ReactorHasConversionsAndItsSet) {
    const ObjectData* reactor = FindObject(*result.data, "R-1");
    EXPECT_EQ(Shown(*FindVariable(reactor, "Reaction Set")), "NH3Set");
    EXPECT_EQ(FindValue(reactor, "Comp Conversion", "Nitrogen")->number, 0.49019675836571985);
    EXPECT_EQ(FindValue(reactor, "Comp Conversion", "Ammonia")->state, VariableState::missing);
}

// N2 + 3 H2 = 2 NH3, at the extent that the file tells.
TEST_F(RecordedReaction, ReactorMakesAndTakesWhatTheExtentSays) {
    const ObjectData* reactor = FindObject(*result.data, "R-1");
    const double extent = FindVariable(reactor, "Est. Molar Extent")->values[0].number;
    EXPECT_NEAR(MolPerSecond(extent), 0.49019675836571985, 1e-12);
    const std::pair<const char*, double> coefficients[] = {
        {"Nitrogen", -1}, {"Hydrogen", -3}, {"Ammonia", 2}};
    for (const auto& [name, coefficient] : coefficients) {
        const double made = FindValue(reactor, "Total Reaction", name)->number;
        EXPECT_NEAR(made, coefficient * extent, 1e-9 * extent) << name;
        EXPECT_NEAR(FindValue(reactor, "Total Inflow", name)->number + made,
                    FindValue(reactor, "Total Outflow", name)->number, 1e-9)
            << name;
    }
    EXPECT_NEAR(FindValue(reactor, "Vessel Temperature")->number, 426.85, 1e-9);
}

TEST_F(RecordedReaction, CompoundsHaveTheirConstants) {
    const CompoundData& hydrogen = result.data->compounds[0];
    EXPECT_EQ(hydrogen.name, "Hydrogen");
    EXPECT_EQ(hydrogen.formula, "H2");
    EXPECT_EQ(hydrogen.molar_mass, 2.01588);
    EXPECT_EQ(hydrogen.critical_temperature_K, 33.19);
    EXPECT_DOUBLE_EQ(hydrogen.critical_pressure_kPa, 1313);
    EXPECT_EQ(hydrogen.acentric_factor, -0.215993);
    EXPECT_EQ(hydrogen.normal_boiling_point_K, 20.39);
    EXPECT_TRUE(hydrogen.cp.empty());
    EXPECT_EQ(hydrogen.other.at("CAS_Number"), "1333-74-0");
    EXPECT_EQ(hydrogen.other.at("Ideal_Gas_Heat_Capacity_Const_A"), "3994.325");
}

TEST_F(RecordedReaction, OnlyFeedsAreGiven) {
    const ObjectData* feed = FindObject(*result.data, "makeup gas");
    const ObjectData* inner = FindObject(*result.data, "compressed");
    for (const char* name : {"Temperature", "Pressure", "Molar Flow"}) {
        EXPECT_EQ(FindValue(feed, name)->state, VariableState::specified) << name;
        EXPECT_EQ(FindValue(inner, name)->state, VariableState::calculated) << name;
    }
    EXPECT_EQ(FindValue(feed, "Mass Flow")->state, VariableState::calculated);
    EXPECT_EQ(FindValue(feed, "Comp Mole Frac", "Nitrogen")->state, VariableState::specified);
    const ObjectData* compressor = FindObject(*result.data, "C-1");
    EXPECT_EQ(FindValue(compressor, "Product Pressure")->state, VariableState::specified);
    EXPECT_EQ(FindValue(compressor, "Adiabatic Efficiency")->state, VariableState::specified);
    EXPECT_EQ(FindValue(compressor, "Polytropic Efficiency")->state, VariableState::calculated);
    EXPECT_EQ(FindValue(compressor, "Duty")->state, VariableState::calculated);
}

}  // namespace

}  // namespace fixtop::casehost::test
