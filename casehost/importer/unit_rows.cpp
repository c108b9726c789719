// SPDX-License-Identifier: Apache-2.0
#include "unit_rows.h"

#include <algorithm>

#include "casehost/unit_op_names.h"
#include "reading.h"

namespace fixtop::casehost::importer {

namespace {

using namespace file_unit;

const std::vector<Choice> kFlag = Words({"false", "true"});

// The first two as the case's own mixers have them.
const OptionRow kInletPressureRule = {"PressureCalculation",
                                      names::kOutletPressureAssignment,
                                      {{"Equalize", names::kEqualizeAll},
                                       {"Minimum", names::kLowestInlet},
                                       {"Average", "Set Outlet to Average Inlet"},
                                       {"Maximum", "Set Outlet to Highest Inlet"}}};

const std::vector<RealRow> kHeaterReals = {
    {"OutletTemperature", names::kProductTemperature, kelvin, "CalcMode=OutletTemperature"},
    {"OutletVaporFraction", "Product Vapour Fraction", none, "CalcMode=OutletVaporFraction"},
    {"DeltaP", names::kPressureDrop, pascal_difference, "*"},
    {"DeltaT", "Temperature Change", kelvin_difference, "CalcMode=TemperatureChange"},
    {"DeltaQ", names::kDuty, kilowatt, "CalcMode=HeatAdded|HeatRemoved"},
    {"Eficiencia", "Efficiency", percent, "*"}};

constexpr char kFlowCoefficientModes[] = "CalcMode=Kv_Liquid|Kv_Gas|Kv_Steam|Kv_General";

constexpr char kPinchPoint[] = "CalculationMode=PinchPoint";

constexpr char kOutletGiven[] = "ReactorOperationMode=OutletTemperature";

UnitClass Reactor(const char* word, const char* type, const char* outlet_valid,
                  std::vector<RealRow> more) {
    UnitClass reactor = {
        word,
        type,
        {{"OutletTemperature", names::kProductTemperature, kelvin, kOutletGiven, 1.0, outlet_valid},
         {"DeltaQ", names::kDuty, kilowatt},
         {"DeltaP", names::kPressureDrop, pascal_difference, "*"},
         {"DeltaT", "Temperature Change", kelvin_difference}},
        {{"ReactorOperationMode", "Operation Mode",
          Words({"Isothermic", "Adiabatic", "OutletTemperature"})}}};
    reactor.reals.insert(reactor.reals.end(), more.begin(), more.end());
    return reactor;
}

const RealRow kInitialGibbs = {"InitialGibbsEnergy", "Initial Gibbs Energy", kilowatt};
const RealRow kFinalGibbs = {"FinalGibbsEnergy", "Final Gibbs Energy", kilowatt};

const std::vector<UnitClass> kClasses = {
    {"Compressor",
     words::kCompressor,
     {{"POut", names::kProductPressure, pascal, "CalcMode=OutletPressure"},
      {"DeltaP", "Pressure Increase", pascal_difference, "CalcMode=Delta_P"},
      {"PressureRatio", "Pressure Ratio", none, "CalcMode=PressureRatio"},
      {"OutletTemperature", names::kProductTemperature, kelvin},
      {"DeltaT", "Temperature Change", kelvin_difference},
      {"DeltaQ", names::kDuty, kilowatt, "CalcMode=PowerRequired"},
      {"AdiabaticEfficiency", names::kAdiabaticEfficiency, percent, "ProcessPath=Adiabatic"},
      {"PolytropicEfficiency", "Polytropic Efficiency", percent, "ProcessPath=Polytropic"},
      {"AdiabaticCoefficient", "Adiabatic Exponent", none},
      {"PolytropicCoefficient", "Polytropic Exponent", none},
      {"AdiabaticHead", "Adiabatic Head", metre, "CalcMode=Head&ProcessPath=Adiabatic"},
      {"PolytropicHead", "Polytropic Head", metre, "CalcMode=Head&ProcessPath=Polytropic"},
      {"Speed", "Speed", rpm, "CalcMode=Curves"}},
     {{"CalcMode", "Calculation Mode",
       Words({"OutletPressure", "Delta_P", "EnergyStream", "PowerRequired", "Head", "Curves",
              "PressureRatio"})},
      {"ProcessPath", "Process Path", Words({"Adiabatic", "Polytropic"})}}},
    {"Heater",
     words::kHeater,
     kHeaterReals,
     {{"CalcMode", "Calculation Mode",
       Words({"HeatAdded", "OutletTemperature", "EnergyStream", "OutletVaporFraction",
              "TemperatureChange"})}}},
    {"Cooler",
     words::kCooler,
     kHeaterReals,
     {{"CalcMode", "Calculation Mode",
       Words({"HeatRemoved", "OutletTemperature", "OutletVaporFraction", "TemperatureChange",
              "EnergyStream"})}}},
    {"Valve",
     words::kValve,
     {{"OutletPressure", names::kProductPressure, pascal, "CalcMode=OutletPressure"},
      {"DeltaP", names::kPressureDrop, pascal_difference, "CalcMode=DeltaP"},
      {"OutletTemperature", names::kProductTemperature, kelvin},
      {"DeltaT", "Temperature Change", kelvin_difference},
      {"DeltaQ", names::kDuty, kilowatt},
      {"Hinlet", "Feed Mass Enthalpy", kj_per_kg},
      {"Houtlet", "Product Mass Enthalpy", kj_per_kg},
      {"OpeningPct", "Valve Opening", percent, kFlowCoefficientModes},
      {"Kv", "Kv", none, kFlowCoefficientModes, 1.0, kFlowCoefficientModes}},
     {{"CalcMode", "Calculation Mode",
       Words({"DeltaP", "OutletPressure", "Kv_Liquid", "Kv_Gas", "Kv_Steam", "Kv_General"})}}},
    {"HeatExchanger",
     words::kHeatExchanger,
     {{"Q", names::kDuty, kilowatt, "CalculationMode=CalcBothTemp"},
      {"Area", "Area", m2, "CalculationMode=CalcBothTemp_UA|CalcTempColdOut|CalcTempHotOut"},
      {"OverallCoefficient", "Overall Heat Transfer Coefficient", watt_per_m2_kelvin,
       "CalculationMode=CalcBothTemp_UA|CalcArea"},
      {"LMTD", names::kLmtd, kelvin_difference},
      {"LMTD_F", "LMTD Correction Factor", none},
      {"HotSideOutletTemperature", "Hot Side Product Temperature", kelvin,
       "CalculationMode=CalcTempColdOut"},
      {"ColdSideOutletTemperature", "Cold Side Product Temperature", kelvin,
       "CalculationMode=CalcTempHotOut"},
      {"HotSidePressureDrop", "Hot Side Pressure Drop", pascal_difference, "*"},
      {"ColdSidePressureDrop", "Cold Side Pressure Drop", pascal_difference, "*"},
      {"MaxHeatExchange", "Maximum Duty", kilowatt},
      {"ThermalEfficiency", "Thermal Efficiency", percent, "CalculationMode=ThermalEfficiency"},
      {"MITA", names::kMinimumApproach, kelvin_difference, kPinchPoint, 1.0, kPinchPoint},
      {"HeatLoss", "Heat Loss", kilowatt, "*"}},
     {{"CalculationMode", "Calculation Mode",
       Words({"CalcTempHotOut", "CalcTempColdOut", "CalcBothTemp", "CalcBothTemp_UA", "CalcArea",
              "ShellandTube_Rating", "ShellandTube_CalcFoulingFactor", "PinchPoint",
              "ThermalEfficiency", "OutletVaporFraction1", "OutletVaporFraction2"})},
      {"FlowDir", "Flow Direction", Words({"CounterCurrent", "CoCurrent"})}}},
    {"Vessel",
     words::kSeparator,
     {{"FlashTemperature", names::kProductTemperature, kelvin, "*", 1.0, "OverrideT=true"},
      {"FlashPressure", names::kProductPressure, pascal, "*", 1.0, "OverrideP=true"},
      {"DeltaQ", names::kDuty, kilowatt},
      {"DimensionRatio", "Length to Diameter Ratio", none, "*"},
      {"SurgeFactor", "Surge Factor", none, "*"}},
     {kInletPressureRule,
      {"OverrideT", "Override Temperature", kFlag},
      {"OverrideP", "Override Pressure", kFlag}},
     {{"CalculationMode", "Calculation Mode"}}},
    {"Mixer", words::kMixer, {}, {kInletPressureRule}},
    {"Recycle",
     "Recycle",
     {{"IterationsTaken", "Iterations", none},
      {"MaximumIterations", "Maximum Iterations", none, "*"}},
     {{"Converged", "Converged", kFlag, ""}}},
    {"DistillationColumn",
     words::kDistillation,
     {{"NumberOfStages", "Number of Stages", none, "*"},
      {"MaxIterations", "Maximum Iterations", none, "*"},
      {"RefluxRatio", "Reflux Ratio", none},
      {"CondenserDuty", "Condenser Duty", kilowatt},
      {"ReboilerDuty", "Reboiler Duty", kilowatt, "", -1.0},
      {"CondenserDeltaP", "Condenser Pressure Drop", pascal_difference, "*"},
      {"ColumnPressureDrop", "Column Pressure Drop", pascal_difference},
      {"TraySpacing", "Tray Spacing", metre, "*"},
      {"EstimatedDiameter", "Estimated Diameter", metre},
      {"EstimatedHeight", "Estimated Height", metre}},
     {},
     {{"CondenserType", "Condenser Type"},
      {"ColumnType", "Column Type"},
      {"SolvingMethodName", "Solving Method"}}},
    // Unless the mode gives it, a conversion reactor's temperature is a leftover.
    Reactor("Reactor_Conversion", words::kConversionReactor, kOutletGiven, {}),
    Reactor("Reactor_Equilibrium", words::kEquilibriumReactor, "*", {kInitialGibbs, kFinalGibbs}),
    Reactor("Reactor_Gibbs", words::kGibbsReactor, "*",
            {kInitialGibbs, kFinalGibbs, {"ElementBalance", "Element Balance Residual", none}}),
    {"Reactor_AnaerobicDigester",
     "Reactor_AnaerobicDigester",
     {{"Volume", "Volume", m3, "*"},
      {"HRT_s", "Hydraulic Residence Time", second, "*"},
      {"CODRemovalEfficiency", "COD Removal Fraction", none, "*"},
      {"MethaneFractionOverride", "Methane Fraction Override", none, "*"},
      {"Result_CODin_kgs", "COD Feed Mass Flow", kg_per_second},
      {"Result_CODremoved_kgs", "COD Removed Mass Flow", kg_per_second},
      {"Result_SubstrateConsumed_kgs", "Substrate Consumed Mass Flow", kg_per_second},
      {"Result_BiogasFlow_mols", "Biogas Molar Flow", mol_per_second},
      {"Result_CH4_kgs", "CH4 Mass Flow", kg_per_second},
      {"Result_CO2_kgs", "CO2 Mass Flow", kg_per_second},
      {"Result_H2S_kgs", "H2S Mass Flow", kg_per_second},
      {"Result_CH4MoleFraction", "CH4 Mole Fraction", none},
      {"Result_Q_duty_kW", names::kDuty, kilowatt},
      {"Result_OutletTemperature_K", names::kProductTemperature, kelvin}},
     {},
     {{"ThermalMode", "Thermal Mode"},
      {"Model", "Model"},
      {"SubstrateCompound", "Substrate Compound"},
      {"MethaneCompound", "Methane Compound"},
      {"CO2Compound", "CO2 Compound"},
      {"WaterCompound", "Water Compound"},
      {"NH3Compound", "NH3 Compound"},
      {"BiomassCompound", "Biomass Compound"},
      {"H2SCompound", "H2S Compound"},
      {"SulfateCompound", "Sulfate Compound"}}},
    {"UnitOp_BiogasUpgrader",
     "UnitOp_BiogasUpgrader",
     {{"H2SRemovalEfficiency", "H2S Removal Fraction", none, "*"},
      {"CO2RemovalEfficiency", "CO2 Removal Fraction", none, "*"},
      {"H2ORemovalEfficiency", "H2O Removal Fraction", none, "*"},
      {"CH4LossFraction", "CH4 Loss Fraction", none, "*"},
      {"Result_CH4RecoveryFraction", "CH4 Recovery Fraction", none},
      {"Result_UpgradedCH4Fraction", "Upgraded Gas CH4 Mole Fraction", none},
      {"Result_FeedMass_kgs", "Feed Mass Flow", kg_per_second},
      {"Result_UpgradedMass_kgs", "Upgraded Gas Mass Flow", kg_per_second},
      {"Result_OffgasMass_kgs", "Off-Gas Mass Flow", kg_per_second}},
     {},
     {{"Technology", "Technology"}}},
    {"SolarPanel",
     "SolarPanel",
     {{"PanelArea", "Panel Area", m2, "*"},
      {"NumberOfPanels", "Number of Panels", none, "*"},
      {"PanelEfficiency", "Panel Efficiency", percent, "*"},
      {"SolarIrradiation_kW_m2", "Solar Irradiation", kilowatt_per_m2, "*"},
      {"ActualSolarIrradiation_kW_m2", "Actual Solar Irradiation", kilowatt_per_m2, "*"},
      {"GeneratedPower", "Generated Power", kilowatt}}},
    {"WaterElectrolyzer",
     "WaterElectrolyzer",
     {{"Voltage", "Voltage", volt, "*"},
      {"NumberOfCells", "Number of Cells", none, "*"},
      {"CellVoltage", "Cell Voltage", volt},
      {"ThermoNeutralVoltage", "Thermoneutral Voltage", volt},
      {"ReversibleVoltage", "Reversible Voltage", volt},
      {"Current", "Current", ampere},
      {"ElectronTransfer", "Electron Molar Flow", mol_per_second},
      {"WasteHeat", "Waste Heat", kilowatt},
      {"Efficiency", "Efficiency Fraction", none}}},
    {"HydroelectricTurbine",
     "HydroelectricTurbine",
     {{"Efficiency", "Efficiency", percent, "*"},
      {"StaticHead", "Static Head", metre, "*"},
      {"VelocityHead", "Velocity Head", metre},
      {"TotalHead", "Total Head", metre},
      {"InletVelocity", "Inlet Velocity", metre_per_second, "*"},
      {"OutletVelocity", "Outlet Velocity", metre_per_second, "*"},
      {"GeneratedPower", "Generated Power", kilowatt}}},
};

// One "Element=word|word".
bool TermHolds(std::string_view term, XmlNode object) {
    const std::size_t equals = term.find('=');
    return ListHolds(term.substr(equals + 1), object.Child(term.substr(0, equals)).Text());
}

bool Holds(std::string_view condition, XmlNode object) {
    if (condition.empty()) return false;
    if (condition == "*") return true;
    while (true) {
        const std::size_t end = condition.find('&');
        if (!TermHolds(condition.substr(0, end), object)) return false;
        if (end == std::string_view::npos) return true;
        condition.remove_prefix(end + 1);
    }
}

}  // namespace

const UnitClass* FindUnitClass(std::string_view word) {
    const auto found = std::ranges::find(kClasses, word, &UnitClass::word);
    return found == kClasses.end() ? nullptr : &*found;
}

void ReadRows(Reading& reading, const UnitClass& rows, XmlNode node, ObjectSheet& sheet) {
    const auto state = [node](const char* specified) {
        return Holds(specified, node) ? VariableState::specified : VariableState::calculated;
    };
    for (const OptionRow& row : rows.options) {
        sheet.Option(row.name, row.choices, node.Child(row.element).Text(), state(row.specified));
    }
    for (const TextRow& row : rows.texts) {
        sheet.Text(row.name, node.Child(row.element).Text(), state(row.specified));
    }
    for (const RealRow& row : rows.reals) {
        Number value = ReadNumber(reading, node.Child(row.element));
        if (value) *value *= row.sign;
        if (!Holds(row.valid, node)) value.reset();
        sheet.Real(row.name, row.unit, value, state(row.specified));
    }
}

}  // namespace fixtop::casehost::importer
