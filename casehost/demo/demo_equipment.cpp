#include "demo/demo_equipment.h"

#include "casehost/unit_op_names.h"
#include "demo/demo_building.h"
#include "demo/demo_compounds.h"

namespace fixtop::casehost::demo {

namespace {

constexpr auto kFound = VariableState::calculated;

constexpr int kTrays = 6;
constexpr int kFeedStage = 4;
// kgmole/h, of N2, CO2, C1, C2, C3, nC4, nC5 and H2O.
const std::vector<double> kFeedFlows = {0, 0, 0, 0, 40, 35, 25, 0};
const std::vector<double> kDistillateFlows = {0, 0, 0, 0, 38.8, 1.2, 0, 0};
const std::vector<double> kBottomsFlows = {0, 0, 0, 0, 1.2, 33.8, 25, 0};
constexpr double kRefluxRatio = 2;
constexpr double kBoilupRatio = 1.5;

double Sum(const std::vector<double>& flows) {
    double sum = 0;
    for (double flow : flows) sum += flow;
    return sum;
}

std::vector<double> Fractions(std::vector<double> flows) {
    const double sum = Sum(flows);
    for (double& flow : flows) flow /= sum;
    return flows;
}

// kg/h.
std::vector<double> MassFlows(std::vector<double> flows) {
    const std::vector<CompoundData> compounds = Compounds();
    for (std::size_t i = 0; i < flows.size(); ++i) flows[i] *= compounds[i].molar_mass;
    return flows;
}

ObjectData SubFlowsheet(const char* name, std::vector<ObjectData> objects) {
    ObjectData sheet = Aside(name, words::kTemplate, {});
    sheet.sub_flowsheet = std::make_shared<FlowsheetData>();
    sheet.sub_flowsheet->objects = std::move(objects);
    return sheet;
}

// ---- The column ----

// The flows of one feed by compound, with their sum in front.
VariableData FeedFlows(const char* name, const char* quantity, std::vector<double> flows) {
    DimensionData compounds = ByCompound();
    compounds.labels.insert(compounds.labels.begin(), "Total");
    ++compounds.count;
    flows.insert(flows.begin(), Sum(flows));
    return Table(name, quantity, {{0, 1, ElementNaming::number, {}}, compounds}, kFound, flows);
}

ObjectData Column() {
    return Aside("T-100", words::kDistillation,
                 {Given("Number of Trays", "", kTrays), Words("Notes", "Depropaniser"),
                  LinkList("Vessels", {"T-100 Flowsheet/Main Tower", "T-100 Flowsheet/Condenser",
                                       "T-100 Flowsheet/Reboiler"}),
                  // The last place is for the next inlet.
                  LinkList("Inlets", {"Column Feed", ""}),
                  LinkList("Inlet Stream Stages", {"T-100 Flowsheet/4_Main Tower"}),
                  FeedFlows("Feed Stream Comp Molar Flows", "MolarFlow", kFeedFlows),
                  FeedFlows("Feed Stream Comp Mass Flows", "MassFlow", MassFlows(kFeedFlows)),
                  Link("My SubFlowsheet", "T-100 Flowsheet/Profiles")});
}

ObjectData Tower() {
    return Aside(
        "Main Tower", "TraySectionObject",
        {Words("Object Name", "Main Tower"),
         Choice("Type of Tray Section", {"Standard", "Side Stripper", "Side Rectifier"}, 0),
         Given("Number of Stages", "", kTrays)});
}

ObjectData Condenser() {
    const double mass_flow = Sum(MassFlows(kDistillateFlows));
    return Aside(
        "Condenser", "CondenserObject",
        {Words("Object Name", "Condenser"), Link("Column", "/T-100"),
         Given("Vessel Pressure", "Pressure", 1600), Given("Vessel Temperature", "Temperature", 40),
         Link("Overhead Vapour Stream", ""), Link("Distillate Stream", "/Distillate"),
         Given("Reflux Molar Flow", "MolarFlow", kRefluxRatio * Sum(kDistillateFlows)),
         Given("Overhead Molar Flow", "MolarFlow", 0),
         Given("Distillate Molar Flow", "MolarFlow", Sum(kDistillateFlows)),
         Given("Heavy Liquid Molar Flow", "MolarFlow", 0),
         Given("Reflux Mass Flow", "MassFlow", kRefluxRatio * mass_flow),
         Given("Overhead Mass Flow", "MassFlow", 0),
         Given("Distillate Mass Flow", "MassFlow", mass_flow),
         Given("Heavy Liquid Mass Flow", "MassFlow", 0),
         List("Nozzle Diameter", "Length", {0.10, 0.15}),
         Table("Vessel Mole Frac", "", {ByCompound()}, kFound, Fractions(kDistillateFlows))});
}

ObjectData Reboiler() {
    const double mass_flow = Sum(MassFlows(kBottomsFlows));
    return Aside(
        "Reboiler", "BPReboilerObject",
        {Words("Object Name", "Reboiler"), Given("Vessel Pressure", "Pressure", 1650),
         Given("Vessel Temperature", "Temperature", 110), Link("Boilup Stream", ""),
         Link("Liquid Product Stream", "/Bottoms"),
         Given("BoilUp Molar Flow", "MolarFlow", kBoilupRatio * Sum(kBottomsFlows)),
         Given("Liquid Molar Flow", "MolarFlow", Sum(kBottomsFlows)),
         Given("HvyLiq Molar Flow", "MolarFlow", 0),
         Given("BoilUp Mass Flow", "MassFlow", kBoilupRatio * mass_flow),
         Given("Liquid Mass Flow", "MassFlow", mass_flow), Given("HvyLiq Mass Flow", "MassFlow", 0),
         List("Nozzle Diameter", "Length", {0.10, 0.20}),
         Table("Vessel Mole Frac", "", {ByCompound()}, kFound, Fractions(kBottomsFlows))});
}

ObjectData FeedStage() {
    return Aside("4_Main Tower", "TrayObject",
                 {Words("Object Name", "4_Main Tower"), Given("Stage Number", "", kFeedStage),
                  WordList("Stage Stream Names", {"Column Feed"}),
                  Table("Comp Mole Frac", "", {ByCompound()}, kFound, Fractions(kFeedFlows))});
}

// Stage 0 is the condenser, the one behind the last tray the reboiler. Profiles run evenly from one
// to the other.
ObjectData Profiles() {
    constexpr int kLast = kTrays + 1;
    const std::vector<double> top = Fractions(kDistillateFlows);
    const std::vector<double> bottom = Fractions(kBottomsFlows);
    std::vector<std::string> names;
    std::vector<double> temperatures, pressures, feeds(kLast + 1, kEmpty), draws = feeds, fractions;
    for (int stage = 0; stage <= kLast; ++stage) {
        const double part = static_cast<double>(stage) / kLast;
        names.push_back(stage == 0       ? "Condenser"
                        : stage == kLast ? "Reboiler"
                                         : std::to_string(stage) + "_Main Tower");
        temperatures.push_back(40 + 70 * part);
        pressures.push_back(1600 + 50 * part);
        for (std::size_t i = 0; i < top.size(); ++i) {
            fractions.push_back(top[i] + part * (bottom[i] - top[i]));
        }
    }
    feeds[kFeedStage] = Sum(kFeedFlows);
    draws[0] = Sum(kDistillateFlows);
    draws[kLast] = Sum(kBottomsFlows);
    const DimensionData stages = {0, kLast + 1, ElementNaming::text, names};
    return Aside(
        "Profiles", "ColumnProfilesObject",
        {WordList("Stage Name", names), List("Stage Temperature", "Temperature", temperatures),
         List("Stage Pressure", "Pressure", pressures),
         List("Stage Net Molar Feed", "MolarFlow", feeds),
         List("Stage Net Molar Draw", "MolarFlow", draws),
         Table("Comp Frac vs Stage", "", {stages, ByCompound()}, kFound, fractions)});
}

// ---- Pipe, curves, reactors ----

ObjectData Pipe() {
    return Aside(
        "PL-100", words::kPipe,
        {Link("Feed", "Sales Gas"), Link("Meter", "Metering"),
         List("Pipe Length", "Length", {1200, 3400, 800}), List("No of Increments", "", {3, 4, 5}),
         List("Elevation Change", "Length", {0, 25, -10}),
         List("Inner Diameter", "Length", {0.3, 0.3, 0.25}),
         Choice("Correlation", {"Beggs and Brill", "Homogeneous"}, 0)});
}

ObjectData Curve(const char* name, double speed, std::vector<double> heads) {
    return Aside(
        name, "CompressorCurveObject",
        {Words("Object Name", name), Given("Speed", "", speed),
         List("Volume Flow", "", {200, 300, 400}), List("Head", "Length", std::move(heads)),
         List("Efficiency", "Percent", {70, 76, 72})});
}

ObjectData Reactor(const char* name, const char* type, const char* reaction_set,
                   std::vector<VariableData> more) {
    std::vector<VariableData> variables = {
        Link("Feed", "Raw Gas"), Words("Reaction Set", reaction_set),
        Given("Vessel Temperature", "Temperature", 850), Given("Vessel Pressure", "Pressure", 2000),
        Table("Vessel Mole Frac", "", {ByCompound()}, kFound, {0.02, 0.12, 0.5, 0, 0, 0, 0, 0.36})};
    variables.insert(variables.end(), more.begin(), more.end());
    return Aside(name, type, std::move(variables));
}

}  // namespace

std::vector<ColumnStream> ColumnStreams() {
    return {{"Column Feed", 60, 1700, Sum(kFeedFlows), Fractions(kFeedFlows)},
            {"Distillate", 40, 1600, Sum(kDistillateFlows), Fractions(kDistillateFlows)},
            {"Bottoms", 110, 1650, Sum(kBottomsFlows), Fractions(kBottomsFlows)}};
}

std::vector<ObjectData> Equipment() {
    return {Column(),
            SubFlowsheet("T-100 Flowsheet",
                         {Tower(), Condenser(), Reboiler(), FeedStage(), Profiles()}),
            Pipe(),
            SubFlowsheet("K-100 Curves", {Curve("Low Speed", 7000, {5200, 4800, 4000}),
                                          Curve("High Speed", 9000, {8600, 7900, 6600})}),
            Reactor("CRV-100", words::kConversionReactor, "Set-2",
                    {WordList("Reaction", {"Combustion"}), List("Conversion", "Percent", {100}),
                     List("Est. Molar Extent", "MolarFlow", {12.5})}),
            Reactor("ERV-100", words::kEquilibriumReactor, "Set-1",
                    {List("Temperature Approach", "TemperatureDifference", {0, 10}),
                     List("Est. Molar Extent", "MolarFlow", {8, 4.5})}),
            Reactor("GBR-100", words::kGibbsReactor, "",
                    {Table("Frac Spec", "", {ByCompound()}, VariableState::specified),
                     Table("Total Inflow", "MolarFlow", {ByCompound()}, kFound,
                           {2, 2, 75, 10, 6, 3, 1.9, 0.1})})};
}

}  // namespace fixtop::casehost::demo
