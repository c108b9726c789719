// The built-in case: a gas plant. Two raw gases are mixed and chilled; the cold gas drives an
// expander and cools the recompressed flash gas on its way to the sales line, the liquid is
// flashed, pumped and stabilised in a sub-flowsheet.

#include "casehost/standard_host.h"
#include "casehost/stream_names.h"
#include "casehost/unit_op_names.h"
#include "demo/demo_basis.h"
#include "demo/demo_building.h"
#include "demo/demo_compounds.h"
#include "demo/demo_equipment.h"

namespace fixtop::casehost {

namespace {

using namespace demo;
using Role = PortData::Role;

constexpr auto kGiven = VariableState::specified;
constexpr auto kFound = VariableState::calculated;

DimensionData ByPhase() {
    return {0,
            3,
            ElementNaming::enumeration,
            {names::kOverall, names::kVapourPhase, names::kLiquidPhase}};
}

// What a feed is given; an empty composition makes a stream that is calculated.
struct FeedConditions {
    double temperature_C = kEmpty;
    double pressure_kPa = kEmpty;
    double molar_flow = kEmpty;  // kgmole/h
    std::vector<double> fractions;
};

ObjectData MaterialStream(const char* name, const FeedConditions& feed = {}) {
    const VariableState state = feed.fractions.empty() ? kFound : kGiven;
    auto input = [&](const char* variable, const char* quantity, double value) {
        VariableData number = Given(variable, quantity, value);
        number.values[0].state = state;
        return number;
    };
    std::vector<VariableData> variables = {
        Found(names::kVapourFraction, ""),
        input(names::kTemperature, "Temperature", feed.temperature_C),
        input(names::kPressure, "Pressure", feed.pressure_kPa),
        input(names::kMolarFlow, "MolarFlow", feed.molar_flow),
        Found(names::kMassFlow, "MassFlow"),
        Found(names::kMolarEnthalpy, "MolarEnthalpy"),
        Found(names::kMolarEntropy, "MolarEntropy"),
        Found(names::kHeatFlow, "EnergyFlow"),
        Found(names::kMassDensity, "Density"),
        Found(names::kMolarMass, "MolarMass"),
        Found(names::kMolarHeatCapacity, "MolarHeatCapacity"),
        Table(names::kCompMoleFrac, "", {ByCompound()}, state, feed.fractions),
        Table(names::kCompMassFrac, "", {ByCompound()}, kFound),
        Table(names::kPhaseFraction, "", {ByPhase()}, kFound),
        Table(names::kPhaseCompMoleFrac, "", {ByPhase(), ByCompound()}, kFound),
    };
    return Make(name, words::kMaterialStream, std::move(variables));
}

ObjectData EnergyStream(const char* name) {
    return Make(name, words::kEnergyStream, {Found(names::kHeatFlow, "EnergyFlow")});
}

void AddMaterialStreams(FlowsheetData& flowsheet) {
    //                                    N2    CO2   C1    C2    C3    nC4   nC5   H2O
    flowsheet.objects = {
        MaterialStream("Raw Gas",
                       {30, 6000, 1000, {0.02, 0.02, 0.75, 0.10, 0.06, 0.03, 0.019, 0.001}}),
        MaterialStream("Tail Gas", {25, 6000, 150, {0.01, 0.01, 0.60, 0.15, 0.12, 0.07, 0.04, 0}}),
    };
    for (const char* name : {"Mixed Gas", "Chilled Gas", "Cold Gas", "Cold Liquid", "Expanded Gas",
                             "Warm Gas", "Sales Gas", "Fuel Gas", "Let Down Liquid", "Flash Gas",
                             "Compressed Gas", "Cooled Gas", "Condensate", "Pumped Condensate",
                             "Warm Condensate", "Stabiliser Gas", "Stable Condensate"}) {
        flowsheet.objects.push_back(MaterialStream(name));
    }
    for (const ColumnStream& each : ColumnStreams()) {
        ObjectData stream = MaterialStream(
            each.name, {each.temperature_C, each.pressure_kPa, each.molar_flow, each.fractions});
        stream.variables.push_back(Words("Object Name", each.name));
        flowsheet.objects.push_back(std::move(stream));
    }
    for (const char* name :
         {"Chiller Duty", "Expander Power", "Compressor Power", "Pump Power", "Heater Duty"}) {
        flowsheet.objects.push_back(EnergyStream(name));
    }
}

ObjectData Stabiliser() {
    ObjectData group =
        Make("Stabiliser", words::kTemplate, {Words("Notes", "Heats and flashes the condensate.")},
             {{Role::feed, 0, "Warm Condensate"},
              {Role::product, 0, "Stabiliser Gas"},
              {Role::product, 1, "Stable Condensate"}});
    group.sub_flowsheet = std::make_shared<FlowsheetData>();
    group.sub_flowsheet->objects = {
        MaterialStream("Inlet"),
        MaterialStream("Hot Inlet"),
        MaterialStream("Overhead"),
        MaterialStream("Bottoms"),
        EnergyStream("Reheat"),
        Make("E-201", words::kHeater,
             {Given(names::kPressureDrop, "PressureDifference", 20),
              Given(names::kProductTemperature, "Temperature", 110),
              Found(names::kDuty, "EnergyFlow")},
             {{Role::feed, 0, "Inlet"},
              {Role::product, 0, "Hot Inlet"},
              {Role::energy_in, 0, "Reheat"}}),
        Make("V-201", words::kSeparator, {Given(names::kPressureDrop, "PressureDifference", 0)},
             {{Role::feed, 0, "Hot Inlet"},
              {Role::product, 0, "Overhead"},
              {Role::product, 1, "Bottoms"}}),
        // It has the name of the group, so that the group's inner streams lie inside of it.
        Aside("Stabiliser", "ControllerOpObject",
              {Given("Set Point", "Temperature", 110), Link("Process Variable Source", "Hot Inlet"),
               Link("Feed", "/Warm Condensate"), Choice("Mode", {"Off", "Manual", "Auto"}, 2)}),
    };
    return group;
}

std::vector<ObjectData> ColdSection() {
    return {
        Make("MIX-100", words::kMixer,
             {Choice(names::kOutletPressureAssignment, {names::kEqualizeAll, names::kLowestInlet},
                     1)},
             {{Role::feed, 0, "Raw Gas"},
              {Role::feed, 1, "Tail Gas"},
              {Role::product, 0, "Mixed Gas"}}),
        Make("E-100", words::kCooler,
             {Given(names::kPressureDrop, "PressureDifference", 50),
              Given(names::kProductTemperature, "Temperature", -20),
              Found(names::kDuty, "EnergyFlow"), Words("Notes", "Propane chiller")},
             {{Role::feed, 0, "Mixed Gas"},
              {Role::product, 0, "Chilled Gas"},
              {Role::energy_out, 0, "Chiller Duty"}}),
        Make(
            "V-100", words::kSeparator,
            {Given(names::kPressureDrop, "PressureDifference", 0), Words("Notes", "Cold separator"),
             Words("Advice", "Level control is by hand.", ValueKind::message)},
            {{Role::feed, 0, "Chilled Gas"},
             {Role::product, 0, "Cold Gas"},
             {Role::product, 1, "Cold Liquid"}}),
        Make("EX-100", words::kExpander,
             {Given(names::kAdiabaticEfficiency, "Percent", 80),
              Given(names::kProductPressure, "Pressure", 3000), Found(names::kDuty, "EnergyFlow"),
              Words(names::kIsCompressor, "NO")},
             {{Role::feed, 0, "Cold Gas"},
              {Role::product, 0, "Expanded Gas"},
              {Role::energy_out, 0, "Expander Power"}}),
        Make("VLV-100", words::kValve,
             {Given(names::kProductPressure, "Pressure", 2000),
              Found(names::kPressureDrop, "PressureDifference")},
             {{Role::feed, 0, "Cold Liquid"}, {Role::product, 0, "Let Down Liquid"}}),
        Make("V-101", words::kSeparator, {Given(names::kPressureDrop, "PressureDifference", 0)},
             {{Role::feed, 0, "Let Down Liquid"},
              {Role::product, 0, "Flash Gas"},
              {Role::product, 1, "Condensate"}}),
    };
}

std::vector<ObjectData> WarmSection() {
    return {
        Make("K-100", words::kCompressor,
             {Given(names::kAdiabaticEfficiency, "Percent", 75),
              Given(names::kProductPressure, "Pressure", 3000), Found(names::kDuty, "EnergyFlow"),
              Words(names::kIsCompressor, "YES"),
              LinkList("Compressor curve", {"K-100 Curves/Low Speed", "K-100 Curves/High Speed"})},
             {{Role::feed, 0, "Flash Gas"},
              {Role::product, 0, "Compressed Gas"},
              {Role::energy_in, 0, "Compressor Power"}}),
        Make("E-101", words::kHeatExchanger,
             {Given(names::kUA, "UA", 20000),
              Given(names::kTubePressureDrop, "PressureDifference", 30),
              Given(names::kShellPressureDrop, "PressureDifference", 20),
              Found(names::kDuty, "EnergyFlow"), Found(names::kLmtd, "TemperatureDifference"),
              Found(names::kMinimumApproach, "TemperatureDifference")},
             {{Role::feed, 0, "Compressed Gas"},
              {Role::feed, 1, "Expanded Gas"},
              {Role::product, 0, "Cooled Gas"},
              {Role::product, 1, "Warm Gas"}}),
        Make("TEE-100", words::kTee,
             {Table(names::kFlowRatio, "", {{0, 2, ElementNaming::number, {}}}, kGiven,
                    {0.95, 0.05})},
             {{Role::feed, 0, "Warm Gas"},
              {Role::product, 0, "Sales Gas"},
              {Role::product, 1, "Fuel Gas"}}),
        Make("P-100", words::kPump,
             {Given(names::kAdiabaticEfficiency, "Percent", 70),
              Given(names::kProductPressure, "Pressure", 4000), Found(names::kDuty, "EnergyFlow")},
             {{Role::feed, 0, "Condensate"},
              {Role::product, 0, "Pumped Condensate"},
              {Role::energy_in, 0, "Pump Power"}}),
        Make("E-102", words::kHeater,
             {Given(names::kPressureDrop, "PressureDifference", 40),
              Given(names::kProductTemperature, "Temperature", 60),
              Found(names::kDuty, "EnergyFlow")},
             {{Role::feed, 0, "Pumped Condensate"},
              {Role::product, 0, "Warm Condensate"},
              {Role::energy_in, 0, "Heater Duty"}}),
        Stabiliser(),
    };
}

void AddAside(CaseData& data) {
    data.main.objects.push_back(
        Aside("Metering", "HovexCorrelationObject",
              {Given("Meter Factor", "", 1.02), Words("Source", "Key: meter-7"),
               Link("Stream", "Sales Gas")}));
    data.utilities = {
        Aside("Sales Gas Envelope", "EnvelopeUtilityObject",
              {Link("Stream", "Sales Gas"), Choice("Curve", {"Bubble Point", "Dew Point"}, 1)}),
        Aside("Condensate Curve", "BPTableUtilityObject",
              {Link("Stream", "Stable Condensate"), Given("Number of Points", "", 11)}),
    };
    data.data_tables = {Aside("Plant Day", "ProcessDataTableObject",
                              {Given("Ambient Temperature", "Temperature", 18), Words("Shift", "A"),
                               Link("Feed", "Raw Gas")})};
    data.reactions = {
        Aside("Reforming", "ConversionReactionObject",
              {Words("Stoichiometry", "CH4 + 2 H2O = CO2 + 4 H2"),
               Given("Conversion", "Percent", 65)}),
        Aside("Combustion", "ConversionReactionObject",
              {Words("Stoichiometry", "CH4 + 2 O2 = CO2 + 2 H2O"),
               Given("Conversion", "Percent", 100)}),
    };
    data.published = {
        Aside("Sales Gas Target", "RTIVariable", {Given("Value", "MolarFlow", 900)}),
        Aside("Chiller Setpoint", "RTIVariable", {Given("Value", "Temperature", -20)}),
    };
}

}  // namespace

CaseData DemoCase() {
    CaseData data;
    data.name = std::string(kDemoName);
    data.title = "A small gas plant";
    data.source = "own";
    data.property_package = "Ideal with Wilson K-values";
    data.compounds = demo::Compounds();
    data.basis = demo::Basis();
    AddMaterialStreams(data.main);
    for (const auto& section : {ColdSection(), WarmSection()}) {
        data.main.objects.insert(data.main.objects.end(), section.begin(), section.end());
    }
    for (ObjectData& object : Equipment()) data.main.objects.push_back(std::move(object));
    AddAside(data);
    return data;
}

}  // namespace fixtop::casehost
