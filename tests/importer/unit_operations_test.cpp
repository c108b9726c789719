// SPDX-License-Identifier: Apache-2.0
// Every class of unit operation: one object with the elements of its class, and where they go.

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "case_reading.h"
#include "casehost/importer.h"

namespace fixtop::casehost::test {

namespace {

std::unique_ptr<CaseData> ReadUnit(const std::string& word, const std::string& elements,
                                   const std::string& more = "") {
    const std::string xml =
        "<DWSIM_Simulation_Data><SimulationObjects><SimulationObject><Type>Some." + word +
        "</Type><Name>u</Name><Calculated>true</Calculated>" + elements +
        "</SimulationObject></SimulationObjects><GraphicObjects><GraphicObject><Name>u</Name>"
        "<Tag>U</Tag></GraphicObject></GraphicObjects><Compounds><Compound><Name>A</Name></"
        "Compound>"
        "<Compound><Name>1,3-B</Name></Compound></Compounds>" +
        more + "</DWSIM_Simulation_Data>";
    ReadResult result = ReadDwxmzBytes(ZipOf(xml), "unit.dwxmz");
    EXPECT_NE(result.data, nullptr) << Lines(result);
    return result.data ? std::move(result.data) : std::make_unique<CaseData>();
}

constexpr VariableState kGiven = VariableState::specified;
constexpr VariableState kFound = VariableState::calculated;

// A number of a class: element, number in the file, variable, number and quantity in the case.
struct NumberRow {
    const char* element;
    double in_file;
    const char* variable;
    double in_case;
    const char* quantity;
    VariableState state = kFound;
};

struct UnitCase {
    const char* word;
    const char* type;
    const char* words;  // elements with the modes
    std::vector<NumberRow> numbers;
};

void PrintTo(const UnitCase& unit, std::ostream* out) {
    *out << unit.word;
}

const UnitCase kUnits[] = {
    {"Compressor",
     "CompressorObject",
     "<CalcMode>PressureRatio</CalcMode><ProcessPath>Polytropic</ProcessPath>",
     {{"POut", 2e6, "Product Pressure", 2000, "Pressure"},
      {"DeltaP", 1e6, "Pressure Increase", 1000, "PressureDifference"},
      {"PressureRatio", 2, "Pressure Ratio", 2, "", kGiven},
      {"OutletTemperature", 400, "Product Temperature", 126.85, "Temperature"},
      {"DeltaT", 50, "Temperature Change", 50, "TemperatureDifference"},
      {"DeltaQ", 10, "Duty", 36000, "EnergyFlow"},
      {"AdiabaticEfficiency", 75, "Adiabatic Efficiency", 75, "Percent"},
      {"PolytropicEfficiency", 80, "Polytropic Efficiency", 80, "Percent", kGiven},
      {"AdiabaticCoefficient", 1.4, "Adiabatic Exponent", 1.4, ""},
      {"PolytropicCoefficient", 1.5, "Polytropic Exponent", 1.5, ""},
      {"AdiabaticHead", 7, "Adiabatic Head", 7, "Length"},
      {"PolytropicHead", 8, "Polytropic Head", 8, "Length"},
      {"Speed", 1500, "Speed", 1500, "RotationalSpeed"}}},
    {"Heater",
     "HeaterOpObject",
     "<CalcMode>HeatAdded</CalcMode>",
     {{"OutletTemperature", 400, "Product Temperature", 126.85, "Temperature"},
      {"OutletVaporFraction", 0.5, "Product Vapour Fraction", 0.5, ""},
      {"DeltaP", 5000, "Pressure Drop", 5, "PressureDifference", kGiven},
      {"DeltaT", 50, "Temperature Change", 50, "TemperatureDifference"},
      {"DeltaQ", 10, "Duty", 36000, "EnergyFlow", kGiven},
      {"Eficiencia", 90, "Efficiency", 90, "Percent", kGiven}}},
    {"Cooler",
     "CoolerOpObject",
     "<CalcMode>OutletVaporFraction</CalcMode>",
     {{"OutletVaporFraction", 0.5, "Product Vapour Fraction", 0.5, "", kGiven},
      {"DeltaQ", 10, "Duty", 36000, "EnergyFlow"}}},
    {"Valve",
     "ValveOpObject",
     "<CalcMode>DeltaP</CalcMode>",
     {{"OutletPressure", 3e6, "Product Pressure", 3000, "Pressure"},
      {"DeltaP", 1e6, "Pressure Drop", 1000, "PressureDifference", kGiven},
      {"OutletTemperature", 300, "Product Temperature", 26.85, "Temperature"},
      {"DeltaT", -5, "Temperature Change", -5, "TemperatureDifference"},
      {"Hinlet", -150, "Feed Mass Enthalpy", -150, "MassEnthalpy"},
      {"Houtlet", -151, "Product Mass Enthalpy", -151, "MassEnthalpy"},
      {"OpeningPct", 50, "Valve Opening", 50, "Percent"},
      {"DeltaQ", 0, "Duty", 0, "EnergyFlow"}}},
    {"HeatExchanger",
     "HeatExOpObject",
     "<CalculationMode>CalcTempColdOut</CalculationMode><FlowDir>CoCurrent</FlowDir>",
     {{"Q", 10, "Duty", 36000, "EnergyFlow"},
      {"Area", 2, "Area", 2, "Area", kGiven},
      {"OverallCoefficient", 500, "Overall Heat Transfer Coefficient", 1800,
       "HeatTransferCoefficient"},
      {"LMTD", 10, "LMTD", 10, "TemperatureDifference"},
      {"LMTD_F", 0.9, "LMTD Correction Factor", 0.9, ""},
      {"HotSideOutletTemperature", 300, "Hot Side Product Temperature", 26.85, "Temperature",
       kGiven},
      {"ColdSideOutletTemperature", 280, "Cold Side Product Temperature", 6.85, "Temperature"},
      {"HotSidePressureDrop", 1000, "Hot Side Pressure Drop", 1, "PressureDifference", kGiven},
      {"ColdSidePressureDrop", 2000, "Cold Side Pressure Drop", 2, "PressureDifference", kGiven},
      {"MaxHeatExchange", 20, "Maximum Duty", 72000, "EnergyFlow"},
      {"ThermalEfficiency", 50, "Thermal Efficiency", 50, "Percent"},
      {"HeatLoss", 1, "Heat Loss", 3600, "EnergyFlow", kGiven}}},
    {"Vessel",
     "FlashTankObject",
     "<OverrideT>true</OverrideT><OverrideP>true</OverrideP>",
     {{"FlashTemperature", 300, "Product Temperature", 26.85, "Temperature", kGiven},
      {"FlashPressure", 2e5, "Product Pressure", 200, "Pressure", kGiven},
      {"DeltaQ", 1, "Duty", 3600, "EnergyFlow"},
      {"DimensionRatio", 3, "Length to Diameter Ratio", 3, "", kGiven}}},
    {"DistillationColumn",
     "DistillationObject",
     "<CondenserType>Total_Condenser</CondenserType>",
     {{"NumberOfStages", 30, "Number of Stages", 30, "", kGiven},
      {"RefluxRatio", 3, "Reflux Ratio", 3, ""},
      {"CondenserDuty", 10, "Condenser Duty", 36000, "EnergyFlow"},
      {"ReboilerDuty", -10, "Reboiler Duty", 36000, "EnergyFlow"},
      {"ColumnPressureDrop", 1000, "Column Pressure Drop", 1, "PressureDifference"},
      {"EstimatedDiameter", 3, "Estimated Diameter", 3, "Length"}}},
    {"Reactor_Conversion",
     "ConversionReactorOpObject",
     "<ReactorOperationMode>OutletTemperature</ReactorOperationMode>",
     {{"OutletTemperature", 300, "Product Temperature", 26.85, "Temperature", kGiven},
      {"DeltaQ", -1, "Duty", -3600, "EnergyFlow"},
      {"DeltaP", 1000, "Pressure Drop", 1, "PressureDifference", kGiven},
      {"DeltaT", 1, "Temperature Change", 1, "TemperatureDifference"}}},
    {"Reactor_Equilibrium",
     "EquilibriumReactorOpObject",
     "<ReactorOperationMode>Isothermic</ReactorOperationMode>",
     {{"OutletTemperature", 300, "Product Temperature", 26.85, "Temperature"},
      {"InitialGibbsEnergy", 1, "Initial Gibbs Energy", 3600, "EnergyFlow"},
      {"FinalGibbsEnergy", -1, "Final Gibbs Energy", -3600, "EnergyFlow"}}},
    {"Reactor_Gibbs",
     "GibbsReactorOpObject",
     "<ReactorOperationMode>Adiabatic</ReactorOperationMode>",
     {{"OutletTemperature", 300, "Product Temperature", 26.85, "Temperature"},
      {"ElementBalance", 1e-9, "Element Balance Residual", 1e-9, ""}}},
    {"Reactor_AnaerobicDigester",
     "Reactor_AnaerobicDigester",
     "<Model>BlackBox</Model>",
     {{"Volume", 1500, "Volume", 1500, "Volume", kGiven},
      {"HRT_s", 1728000, "Hydraulic Residence Time", 1728000, "Time", kGiven},
      {"Result_CODin_kgs", 1, "COD Feed Mass Flow", 3600, "MassFlow"},
      {"Result_BiogasFlow_mols", 1, "Biogas Molar Flow", 3.6, "MolarFlow"},
      {"Result_CH4MoleFraction", 0.6, "CH4 Mole Fraction", 0.6, ""},
      {"Result_Q_duty_kW", -1, "Duty", -3600, "EnergyFlow"},
      {"Result_OutletTemperature_K", 300, "Product Temperature", 26.85, "Temperature"}}},
    {"UnitOp_BiogasUpgrader",
     "UnitOp_BiogasUpgrader",
     "",
     {{"CH4LossFraction", 0.001, "CH4 Loss Fraction", 0.001, "", kGiven},
      {"Result_OffgasMass_kgs", 1, "Off-Gas Mass Flow", 3600, "MassFlow"}}},
    {"SolarPanel",
     "SolarPanel",
     "",
     {{"PanelArea", 2, "Panel Area", 2, "Area", kGiven},
      {"NumberOfPanels", 10, "Number of Panels", 10, "", kGiven},
      {"PanelEfficiency", 20, "Panel Efficiency", 20, "Percent", kGiven},
      {"SolarIrradiation_kW_m2", 1, "Solar Irradiation", 1, "Irradiation", kGiven},
      {"GeneratedPower", 4, "Generated Power", 14400, "EnergyFlow"}}},
    {"WaterElectrolyzer",
     "WaterElectrolyzer",
     "",
     {{"Voltage", 220, "Voltage", 220, "Voltage", kGiven},
      {"CellVoltage", 2, "Cell Voltage", 2, "Voltage"},
      {"Current", 30, "Current", 30, "Current"},
      {"ElectronTransfer", 1, "Electron Molar Flow", 3.6, "MolarFlow"},
      {"WasteHeat", 1, "Waste Heat", 3600, "EnergyFlow"},
      {"Efficiency", 0.7, "Efficiency Fraction", 0.7, ""}}},
    {"HydroelectricTurbine",
     "HydroelectricTurbine",
     "",
     {{"Efficiency", 80, "Efficiency", 80, "Percent", kGiven},
      {"StaticHead", 10, "Static Head", 10, "Length", kGiven},
      {"TotalHead", 11, "Total Head", 11, "Length"},
      {"InletVelocity", 2, "Inlet Velocity", 2, "Speed", kGiven},
      {"GeneratedPower", 1, "Generated Power", 3600, "EnergyFlow"}}},
};

class UnitOperation : public testing::TestWithParam<UnitCase> {};

TEST_P(UnitOperation, NumbersGetNameUnitAndState) {
    const UnitCase& unit = GetParam();
    std::string elements = unit.words;
    for (const NumberRow& row : unit.numbers) {
        std::ostringstream text;
        text.precision(17);
        text << "<" << row.element << ">" << row.in_file << "</" << row.element << ">";
        elements += text.str();
    }
    const auto data = ReadUnit(unit.word, elements);
    const ObjectData* object = FindObject(*data, "U");
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->type, unit.type);
    for (const NumberRow& row : unit.numbers) {
        const VariableData* variable = FindVariable(object, row.variable);
        ASSERT_NE(variable, nullptr) << row.variable;
        EXPECT_NEAR(variable->values[0].number, row.in_case,
                    1e-13 * (273.15 + std::abs(row.in_case)))
            << row.variable;
        EXPECT_EQ(variable->spec->quantity, row.quantity) << row.variable;
        EXPECT_EQ(variable->values[0].state, row.state) << row.variable;
    }
}

INSTANTIATE_TEST_SUITE_P(All, UnitOperation, testing::ValuesIn(kUnits),
                         [](const testing::TestParamInfo<UnitCase>& row) {
                             return std::string(row.param.word);
                         });

TEST(UnitOperations, RepeatedAndDefaultElementsAreLeftOut) {
    const auto data = ReadUnit("Heater",
                               "<HeatDuty>1</HeatDuty><PressureDrop>2</PressureDrop>"
                               "<Efficiency>3</Efficiency><Left>4</Left>");
    for (const VariableData& variable : FindObject(*data, "U")->variables) {
        EXPECT_EQ(variable.values[0].number, kEmpty) << variable.spec->name;
    }
}

TEST(UnitOperations, DefaultsThatAreNotInUseAreEmpty) {
    const auto vessel = ReadUnit("Vessel",
                                 "<OverrideT>false</OverrideT>"
                                 "<FlashTemperature>298.15</FlashTemperature>");
    EXPECT_EQ(FindValue(FindObject(*vessel, "U"), "Product Temperature")->state,
              VariableState::missing);
    const auto reactor = ReadUnit("Reactor_Conversion",
                                  "<ReactorOperationMode>Isothermic</ReactorOperationMode>"
                                  "<OutletTemperature>298.15</OutletTemperature>");
    EXPECT_EQ(FindValue(FindObject(*reactor, "U"), "Product Temperature")->state,
              VariableState::missing);
    const auto valve = ReadUnit("Valve", "<CalcMode>DeltaP</CalcMode><Kv>100</Kv>");
    EXPECT_EQ(FindValue(FindObject(*valve, "U"), "Kv")->state, VariableState::missing);
    for (const auto& [mode, state] :
         {std::pair("CalcBothTemp_UA", VariableState::missing), std::pair("PinchPoint", kGiven)}) {
        const auto exchanger = ReadUnit("HeatExchanger", "<CalculationMode>" + std::string(mode) +
                                                             "</CalculationMode><MITA>5</MITA>");
        EXPECT_EQ(FindValue(FindObject(*exchanger, "U"), "Minimum Approach")->state, state) << mode;
    }
}

TEST(UnitOperations, ExchangersHaveTheProductOfCoefficientAndArea) {
    const auto data =
        ReadUnit("HeatExchanger", "<OverallCoefficient>500</OverallCoefficient><Area>2</Area>");
    const ValueData* conductance = FindValue(FindObject(*data, "U"), "UA");
    ASSERT_TRUE(conductance);
    EXPECT_DOUBLE_EQ(conductance->number, 1000 * 3.6);  // W/K, in kJ/(C h)
    const auto half = ReadUnit("HeatExchanger", "<Area>2</Area>");
    EXPECT_FALSE(FindValue(FindObject(*half, "U"), "UA"));
}

TEST(UnitOperations, HeatersHaveTheStateBehindTheirOneZone) {
    for (const char* word : {"Heater", "Cooler"}) {
        const auto data = ReadUnit(word, "<OutletVaporFraction>0.5</OutletVaporFraction>");
        const VariableData* zones = FindVariable(FindObject(*data, "U"), "Zone vapour frac");
        ASSERT_TRUE(zones) << word;
        ASSERT_EQ(zones->values.size(), 1u);
        EXPECT_EQ(zones->values[0].number, 0.5);
        const auto none = ReadUnit(word, "");
        EXPECT_FALSE(FindVariable(FindObject(*none, "U"), "Zone vapour frac")) << word;
    }
}

TEST(UnitOperations, ModesAreEnumerationsWithAllWords) {
    const auto data = ReadUnit("Cooler", "<CalcMode>TemperatureChange</CalcMode>");
    const VariableData& mode = *FindVariable(FindObject(*data, "U"), "Calculation Mode");
    EXPECT_EQ(mode.spec->kind, ValueKind::enumeration);
    EXPECT_EQ(mode.spec->options,
              (std::vector<std::string>{"HeatRemoved", "OutletTemperature", "OutletVaporFraction",
                                        "TemperatureChange", "EnergyStream"}));
    EXPECT_EQ(mode.values[0].number, 3);
    EXPECT_EQ(mode.values[0].state, kGiven);
    const auto odd = ReadUnit("Cooler", "<CalcMode>Magic</CalcMode>");
    EXPECT_EQ(Shown(*FindVariable(FindObject(*odd, "U"), "Calculation Mode")), "Magic");
    const auto none = ReadUnit("Cooler", "");
    EXPECT_EQ(FindValue(FindObject(*none, "U"), "Calculation Mode")->state, VariableState::missing);
}

TEST(UnitOperations, PressureRuleIsThatOfTheCasesOwnMixers) {
    struct Rule {
        const char* word;
        const char* shown;
    };
    for (const Rule& rule : {Rule{"Minimum", "Set Outlet to Lowest Inlet"},
                             {"Maximum", "Set Outlet to Highest Inlet"},
                             {"Average", "Set Outlet to Average Inlet"}}) {
        const auto data = ReadUnit(
            "Mixer", std::string("<PressureCalculation>") + rule.word + "</PressureCalculation>");
        const VariableData& variable =
            *FindVariable(FindObject(*data, "U"), "Outlet Pressure Assignment");
        EXPECT_EQ(Shown(variable), rule.shown);
        EXPECT_EQ(variable.spec->options[0], "Equalize All");
        EXPECT_EQ(variable.spec->options[1], "Set Outlet to Lowest Inlet");
    }
}

TEST(UnitOperations, OnlyCompressorsSayThatTheyAreOne) {
    const auto data = ReadUnit("Compressor", "");
    EXPECT_EQ(Shown(*FindVariable(FindObject(*data, "U"), "IsCompressor")), "YES");
}

TEST(UnitOperations, RecycleHasErrorsValuesAndTolerances) {
    const auto data = ReadUnit(
        "Recycle",
        "<Converged>false</Converged><IterationsTaken>7</IterationsTaken>"
        "<Errors><Item Key=\"Temperature\" Value=\"3.5\"/><Item Key=\"Pressure\" Value=\"NaN\"/>"
        "</Errors><Values><Item Key=\"Temperature\" Value=\"300\"/>"
        "<Item Key=\"MassFlow\" Value=\"2\"/></Values>"
        "<ConvergenceParameters><Temperatura>0.1</Temperatura><Composicao>0.001</Composicao>"
        "</ConvergenceParameters>");
    const ObjectData* recycle = FindObject(*data, "U");
    EXPECT_EQ(recycle->status, ObjectStatus::warning);
    EXPECT_EQ(Shown(*FindVariable(recycle, "Converged")), "false");
    EXPECT_EQ(FindValue(recycle, "Iterations")->number, 7);
    EXPECT_EQ(FindValue(recycle, "Temperature Error")->number, 3.5);
    EXPECT_EQ(FindValue(recycle, "Pressure Error")->state, VariableState::missing);
    EXPECT_NEAR(FindValue(recycle, "Temperature")->number, 26.85, 1e-12);
    EXPECT_EQ(FindValue(recycle, "Mass Flow")->number, 7200);
    EXPECT_EQ(FindValue(recycle, "Temperature Tolerance")->number, 0.1);
    EXPECT_EQ(FindValue(recycle, "Composition Tolerance")->number, 0.001);
}

TEST(UnitOperations, ReactorHasItsListsByLabel) {
    const auto data = ReadUnit(
        "Reactor_Gibbs",
        "<ReactionSetID>S1</ReactionSetID>"
        "<CompoundConversions><Compound ID=\"A\">0.5</Compound><Compound ID=\"1,3-B\">-Infinity"
        "</Compound></CompoundConversions>"
        "<ReactionConversions><Reaction ID=\"R\">0.25</Reaction></ReactionConversions>"
        "<ReactionExtents><ReactionExtent ID=\"R\" Value=\"2\"/></ReactionExtents>"
        "<ComponentIDs><Item>A</Item><Item>1,3-B</Item></ComponentIDs>"
        "<Elements><Element ID=\"C\"/><Element ID=\"H\"/></Elements>"
        "<TotalElements><Element ID=\"5\"/><Element ID=\"7\"/></TotalElements>"
        "<ElementMatrix>1,2:3,4</ElementMatrix>",
        "<ReactionSets><ReactionSet><ID>S1</ID><Name>Main set</Name></ReactionSet></ReactionSets>");
    const ObjectData* reactor = FindObject(*data, "U");
    EXPECT_EQ(Shown(*FindVariable(reactor, "Reaction Set")), "Main set");
    EXPECT_EQ(FindValue(reactor, "Comp Conversion", "A")->number, 0.5);
    EXPECT_EQ(FindValue(reactor, "Comp Conversion", "1,3-B")->number, kEmpty);
    EXPECT_EQ(FindValue(reactor, "Reaction Conversion", "R")->number, 0.25);
    EXPECT_DOUBLE_EQ(FindValue(reactor, "Reaction Extent", "R")->number, 7.2);
    EXPECT_DOUBLE_EQ(FindValue(reactor, "Element Molar Flow", "H")->number, 25.2);
    const VariableData& matrix = *FindVariable(reactor, "Element Matrix");
    EXPECT_EQ(matrix.spec->dimensions[0].labels, (std::vector<std::string>{"C", "H"}));
    EXPECT_EQ(matrix.values[2].number, 3);
}

const char kTwoStages[] =
    "<Stages><Stage><Name>Condenser</Name><P>100000</P><T>300</T><Efficiency>1</Efficiency></Stage>"
    "<Stage><Name>Reboiler</Name><P>200000</P><T>350</T><Efficiency>1</Efficiency></Stage></"
    "Stages>";

TEST(UnitOperations, ColumnTakesCompoundNamesWithCommasWhole) {
    const auto data =
        ReadUnit("DistillationColumn",
                 std::string(kTwoStages) +
                     "<Results><compids>1,3-B,A</compids><Vf>{1; 2}</Vf>"
                     "<xf><data>{0.1; 0.9}</data><data>{0.2; 0.8}</data></xf></Results>");
    const ObjectData* column = FindObject(*data, "U");
    const VariableData* liquid = FindVariable(column, "Stage Liquid Mole Frac");
    ASSERT_NE(liquid, nullptr);
    EXPECT_EQ(liquid->spec->dimensions[1].labels, (std::vector<std::string>{"1,3-B", "A"}));
    EXPECT_EQ(liquid->values[3].number, 0.8);
    EXPECT_DOUBLE_EQ(FindValue(column, "Stage Vapour Molar Flow", "Reboiler")->number, 7.2);
    EXPECT_EQ(FindValue(column, "Number of Trays")->number, 0);
}

TEST(UnitOperations, ColumnKeepsAForeignSpecificationUnitAsText) {
    const auto data =
        ReadUnit("DistillationColumn",
                 "<Specs><Spec ID=\"C\"><SType>Heat_Duty</SType><SpecUnit>Btu/h</SpecUnit>"
                 "<SpecValue>5</SpecValue></Spec><Spec ID=\"R\"><SType>Heat_Duty</SType>"
                 "<SpecUnit>kW</SpecUnit><SpecValue>5</SpecValue></Spec></Specs>");
    const ObjectData* column = FindObject(*data, "U");
    EXPECT_EQ(FindValue(column, "Condenser Spec Value")->number, 5);
    EXPECT_EQ(FindVariable(column, "Condenser Spec Value")->spec->quantity, "");
    EXPECT_EQ(Shown(*FindVariable(column, "Condenser Spec Unit")), "Btu/h");
    EXPECT_EQ(FindValue(column, "Reboiler Spec Value")->number, 18000);
    EXPECT_EQ(FindVariable(column, "Reboiler Spec Unit"), nullptr);
}

struct BadColumn {
    const char* results;
    const char* told;
};

TEST(UnitOperations, ColumnProfilesMustFitTheStages) {
    const BadColumn cases[] = {
        {"<Vf>{1; 2; 3}</Vf>", "expected 2 numbers, found 3"},
        {"<Vf>{}</Vf>", "expected 2 numbers, found 0"},
        {"<Vf>1; 2</Vf>", "expected numbers as '{a; b; c}'"},
        {"<Vf>{1; x}</Vf>", "expected a number, found 'x'"},
        {"<compids>A</compids><xf><data>{1}</data></xf>", "a row for each of 2 stages, found 1"},
        {"<compids>A</compids><xf><data>{1; 2}</data></xf>", "expected 1 numbers, found 2"},
    };
    for (const BadColumn& bad : cases) {
        const std::string xml =
            "<DWSIM_Simulation_Data><SimulationObjects><SimulationObject>"
            "<Type>DistillationColumn</Type><Name>u</Name>" +
            std::string(kTwoStages) + "<Results>" + bad.results +
            "</Results></SimulationObject></SimulationObjects><GraphicObjects>"
            "<GraphicObject><Name>u</Name><Tag>U</Tag></GraphicObject></GraphicObjects>"
            "</DWSIM_Simulation_Data>";
        const ReadResult result = ReadDwxmzBytes(ZipOf(xml), "column.dwxmz");
        EXPECT_EQ(result.data, nullptr) << bad.results;
        EXPECT_NE(Lines(result).find(bad.told), std::string::npos) << Lines(result);
    }
}

}  // namespace

}  // namespace fixtop::casehost::test
