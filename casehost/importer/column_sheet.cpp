// SPDX-License-Identifier: Apache-2.0
#include "column_sheet.h"

#include <algorithm>
#include <map>

#include "casehost/stream_names.h"
#include "casehost/unit_op_names.h"
#include "column_parts.h"
#include "naming/object_path.h"
#include "object_sheet.h"

namespace fixtop::casehost::importer {

namespace {

using enum VariableState;

constexpr char kTower[] = "Main Tower";
constexpr char kTraySection[] = "TraySectionObject";
constexpr char kStage[] = "TrayObject";
constexpr char kProfiles[] = "ColumnProfilesObject";
constexpr char kSpecification[] = "ColumnSpecObject";

// Profiles that the host has by the same name, and the liquid's composition by another.
constexpr const char* kProfileNames[] = {
    "Stage Temperature",           "Stage Pressure",          "Stage Efficiency",
    "Stage Vapour Molar Flow",     "Stage Liquid Molar Flow", "Stage Vapour Draw Molar Flow",
    "Stage Liquid Draw Molar Flow"};
constexpr std::pair<const char*, const char*> kFractionNames[] = {
    {"Stage Liquid Mole Frac", "Comp Frac vs Stage"},
    {"Stage Vapour Mole Frac", "Stage Vapour Mole Frac"}};

// What a specification is about, at the condenser and at the reboiler.
struct SpecType {
    const char* word;
    const char* of_condenser;
    const char* of_reboiler;
};
constexpr SpecType kSpecTypes[] = {{"Heat_Duty", "CondenserDuty", "ReboilerDuty"},
                                   {"Product_Molar_Flow_Rate", "DistillateRate", "BottomsRate"},
                                   {"Component_Molar_Flow_Rate", "ComponentFlow", "ComponentFlow"},
                                   {"Product_Mass_Flow_Rate", "DistillateRate", "BottomsRate"},
                                   {"Component_Mass_Flow_Rate", "ComponentFlow", "ComponentFlow"},
                                   {"Component_Fraction", "ComponentFraction", "ComponentFraction"},
                                   {"Component_Recovery", "ComponentRecovery", "ComponentRecovery"},
                                   {"Stream_Ratio", "RefluxRatio", "BoilupRatio"},
                                   {"Temperature", "CondenserTemperature", "ReboilerTemperature"},
                                   {"Feed_Recovery", "FeedRecovery", "FeedRecovery"}};

class ColumnSheet {
 public:
    ColumnSheet(Reading& reading, CaseData& data, std::size_t column, const std::string& name)
        : reading_(reading),
          data_(data),
          column_(data.main.objects[column]),
          parts_(data, column_),
          name_(name),
          sheet_(reading, column_) {}

    ObjectData Make() {
        AddTower();
        AddVessels();
        AddStages();
        AddProfiles();
        AddSpecifications();
        LeadToStreams();
        sheet_.Link("My SubFlowsheet", Inside(kProfilesName));
        ObjectData sheet;
        sheet.name = name_;
        sheet.type = words::kTemplate;
        sheet.sub_flowsheet = std::make_shared<FlowsheetData>();
        sheet.sub_flowsheet->objects = std::move(inner_);
        return sheet;
    }

 private:
    static constexpr char kProfilesName[] = "Profiles";

    std::string Inside(const std::string& name) const {
        return path::Escape(name_) + '/' + path::Escape(name);
    }
    static std::string Outside(const std::string& name) { return '/' + path::Escape(name); }

    ObjectSheet Add(const std::string& name, const char* type) {
        ObjectData& object = inner_.emplace_back();
        object.name = name;
        object.type = type;
        ObjectSheet sheet(reading_, object);
        sheet.Text("Object Name", name);
        return sheet;
    }

    void AddTower() {
        ObjectSheet tower = Add(kTower, kTraySection);
        tower.Option("Type of Tray Section", Words({"Standard", "Side Stripper", "Side Rectifier"}),
                     "Standard", specified);
        const std::vector<int> trays = parts_.Trays();
        std::vector<std::string> names;
        std::vector<Number> numbers, temperatures;
        for (const int stage : trays) {
            names.push_back(parts_.stages[stage]);
            numbers.emplace_back(stage);
            temperatures.push_back(parts_.At("Stage Temperature", stage));
        }
        tower.Real("Number of Stages", file_unit::none, static_cast<double>(trays.size()));
        tower.Texts("Stage Name", names);
        tower.Numbers("Stage Number", file_unit::none, numbers);
        tower.Numbers("Stage Temperature", internal_unit::temperature, temperatures);
        tower.CopyAs(parts_.Find("Estimated Diameter"), "Diameter");
        tower.CopyAs(parts_.Find("Tray Spacing"), "Tray Spacing");
        tower.CopyAs(parts_.Find("Column Pressure Drop"), "Pressure Drop");
        AddDraws(tower, "Liquid", parts_.liquid_draws);
        AddDraws(tower, "Vapour", parts_.vapour_draws);
        around_.push_back({kTower, Inside(kTower)});
        vessels_.push_back(Inside(kTower));
    }
    void AddDraws(ObjectSheet& tower, const std::string& phase,
                  const std::vector<ColumnStream>& draws) {
        if (draws.empty()) return;
        std::vector<std::string> names, stages;
        for (const ColumnStream& draw : draws) {
            names.push_back(draw.object->name);
            stages.push_back(StageName("Draw Stage ", draw.stage));
        }
        tower.Texts(phase + " Draw", names);
        tower.Links(phase + " Draws", stages);
    }

    // A vessel has the conditions of its stage, and the flow that goes back into the column.
    void AddVessels() {
        if (parts_.HasCondenser()) {
            ObjectSheet vessel = AddVessel("Condenser", 0);
            vessel.Text("Condenser Type", parts_.CondenserType());
            AddProduct(vessel, "Overhead Vapour Stream", "Overhead", parts_.overhead);
            AddProduct(vessel, "Distillate Stream", "Distillate", parts_.distillate);
            AddProduct(vessel, "Heavy Liquid Stream", "Heavy Liquid", parts_.heavy_distillate);
            AddReturn(vessel, "Reflux", "Stage Liquid Molar Flow", "Stage Liquid Mole Frac", 0);
        }
        if (parts_.HasReboiler()) {
            const int bottom = parts_.Bottom();
            ObjectSheet vessel = AddVessel("Reboiler", bottom);
            AddProduct(vessel, "Liquid Product Stream", "Liquid", parts_.bottoms);
            AddProduct(vessel, "2nd Liquid Draw Stream", "HvyLiq", nullptr);
            AddReturn(vessel, "BoilUp", "Stage Vapour Molar Flow", "Stage Vapour Mole Frac",
                      bottom);
        }
        sheet_.Links("Vessels", vessels_);
    }
    ObjectSheet AddVessel(const std::string& name, int stage) {
        vessels_.push_back(Inside(name));
        ObjectSheet vessel =
            Add(name, name == "Condenser" ? "CondenserObject" : "BPReboilerObject");
        vessel.Real("Vessel Temperature", internal_unit::temperature,
                    parts_.At("Stage Temperature", stage));
        vessel.Real("Vessel Pressure", internal_unit::pressure, parts_.At("Stage Pressure", stage));
        vessel.CopyAs(parts_.Find(name + " Duty"), "Duty");
        return vessel;
    }
    static void AddProduct(ObjectSheet& vessel, const char* link, const std::string& flow,
                           const ObjectData* stream) {
        vessel.Link(link, stream ? Outside(stream->name) : "");
        const auto of = [&](const char* name) {
            return stream ? ValueOf(*stream, name) : Number(0.0);
        };
        vessel.Real(flow + " Molar Flow", internal_unit::molar_flow, of(names::kMolarFlow));
        vessel.Real(flow + " Mass Flow", internal_unit::mass_flow, of(names::kMassFlow));
    }
    void AddReturn(ObjectSheet& vessel, const std::string& flow, const char* profile,
                   const char* fractions, int stage) {
        const Number moles = parts_.At(profile, stage);
        const Number molar_mass = parts_.MolarMass(fractions, stage);
        const Number mass = moles && molar_mass ? Number(*moles * *molar_mass) : Number();
        vessel.Real(flow + " Molar Flow", internal_unit::molar_flow, moles);
        vessel.Real(flow + " Mass Flow", internal_unit::mass_flow, mass);
    }

    // An inlet stage begins with its first stream, from which the names of the components are.
    void AddStages() {
        std::map<int, std::vector<const ObjectData*>> inlets;
        for (const ColumnStream& feed : parts_.feeds) inlets[feed.stage].push_back(feed.object);
        std::vector<std::string> stages;
        for (const auto& [stage, streams] : inlets) {
            const std::string name = StageName("Inlet Stage ", stage);
            stages.push_back(Inside(name));
            ObjectData& object = inner_.emplace_back();
            object.name = name;
            object.type = kStage;
            ObjectSheet sheet(reading_, object);
            sheet.Link("Inlet Stream", Outside(streams.front()->name));
            sheet.Text("Object Name", parts_.stages[stage]);
            sheet.Real("Stage Number", file_unit::none, stage);
            std::vector<std::string> entering;
            for (const ObjectData* stream : streams) entering.push_back(stream->name);
            sheet.Texts("Stage Stream Names", entering);
        }
        sheet_.Links("Inlet Stream Stages", stages);
        for (const auto* draws : {&parts_.liquid_draws, &parts_.vapour_draws}) {
            for (const ColumnStream& draw : *draws) AddDrawStage(draw);
        }
    }
    void AddDrawStage(const ColumnStream& draw) {
        const std::string name = StageName("Draw Stage ", draw.stage);
        const auto has_name = [&](const ObjectData& each) { return each.name == name; };
        if (std::ranges::any_of(inner_, has_name)) return;
        ObjectSheet stage = Add(name, kStage);
        stage.Real("Stage Number", file_unit::none, draw.stage);
        stage.Texts("Vap and Liq draws", {draw.object->name});
        stage.Real("Draw Molar Flow", internal_unit::molar_flow,
                   ValueOf(*draw.object, names::kMolarFlow));
    }
    static std::string StageName(const char* kind, int stage) {
        return kind + std::to_string(stage);
    }

    void AddProfiles() {
        ObjectSheet profiles = Add(kProfilesName, kProfiles);
        profiles.Texts("Stage Name", parts_.stages);
        for (const char* name : kProfileNames) profiles.CopyAs(parts_.Find(name), name);
        for (const auto& [from, to] : kFractionNames) {
            if (!parts_.Find(from)) continue;
            profiles.Array(to, file_unit::none,
                           {LabelledBy(parts_.stages), LabelledBy(parts_.compounds)},
                           parts_.Fractions(from));
        }
        profiles.Array("Stage Net Molar Feed", internal_unit::molar_flow,
                       {LabelledBy(parts_.stages)}, parts_.NetFlows(parts_.feeds));
        profiles.Array("Stage Net Molar Draw", internal_unit::molar_flow,
                       {LabelledBy(parts_.stages)}, parts_.NetFlows(parts_.products));
    }

    void AddSpecifications() {
        std::vector<std::string> names, paths;
        for (const char* place : {"Condenser", "Reboiler"}) {
            const std::string name = std::string(place) + " Spec";
            const VariableData* type = parts_.Find(name + " Type");
            if (!type || type->values[0].number == kEmpty) continue;
            ObjectSheet spec = Add(name, kSpecification);
            spec.Text("Specification Type", SpecTypeOf(*type, place));
            spec.Real("Active", file_unit::none, 1);
            spec.CopyAs(parts_.Find(name + " Value"), "Specified Value");
            spec.CopyAs(parts_.Find(name + " Calculated Value"), "Calculated Value");
            names.push_back(name);
            paths.push_back(Inside(name));
        }
        if (!names.empty()) sheet_.Links("Specifications", paths, names);
    }
    static std::string SpecTypeOf(const VariableData& type, std::string_view place) {
        const std::string& word =
            type.spec->options[static_cast<std::size_t>(type.values[0].number)];
        const auto known = std::ranges::find(kSpecTypes, word, &SpecType::word);
        if (known == std::end(kSpecTypes)) return word;
        return place == "Condenser" ? known->of_condenser : known->of_reboiler;
    }

    // The list of inlets has a place for one more.
    void LeadToStreams() {
        std::vector<std::string> inlets;
        for (ColumnStream& feed : parts_.feeds) {
            inlets.push_back(Outside(feed.object->name));
            NameStream(*feed.object);
        }
        inlets.emplace_back();
        sheet_.Links("Inlets", inlets);
        AddFeedFlows("Feed Stream Comp Molar Flows", internal_unit::molar_flow, names::kMolarFlow,
                     "Comp Molar Flow");
        AddFeedFlows("Feed Stream Comp Mass Flows", internal_unit::mass_flow, names::kMassFlow,
                     "Comp Mass Flow");
        AddTotal("Total Mass Flow In", parts_.feeds);
        AddTotal("Total Mass Flow Out", parts_.products);
        for (const auto* streams : {&parts_.feeds, &parts_.products}) {
            for (const ColumnStream& each : *streams) {
                around_.push_back({each.object->name, Outside(each.object->name)});
            }
        }
        around_.push_back({column_.name, Outside(column_.name)});
        LinksTo("Flowsheet Objects", around_);
        std::vector<Named> energies;
        for (const std::string& name : parts_.energies) energies.push_back({name, Outside(name)});
        if (!energies.empty()) LinksTo("Energy Streams", energies);
    }
    void NameStream(ObjectData& stream) {
        constexpr char kName[] = "Object Name";
        if (!FindVariable(stream, kName)) ObjectSheet(reading_, stream).Text(kName, stream.name);
    }
    // The total of a feed stands before its components.
    void AddFeedFlows(const char* name, FileUnit unit, const char* total, const char* by_compound) {
        std::vector<std::string> labels = {"Total"};
        labels.insert(labels.end(), parts_.compounds.begin(), parts_.compounds.end());
        std::vector<Number> flows;
        for (const ColumnStream& feed : parts_.feeds) {
            flows.push_back(ValueOf(*feed.object, total));
            for (const std::string& compound : parts_.compounds) {
                flows.push_back(ValueOf(*feed.object, by_compound, compound));
            }
        }
        sheet_.Array(name, unit, {Numbered(parts_.feeds.size()), LabelledBy(labels)}, flows);
    }
    void AddTotal(const char* name, const std::vector<ColumnStream>& streams) {
        Number sum = 0.0;
        for (const ColumnStream& each : streams) {
            const Number flow = ValueOf(*each.object, names::kMassFlow);
            sum = sum && flow ? Number(*sum + *flow) : Number();
        }
        sheet_.Real(name, internal_unit::mass_flow, sum);
    }

    struct Named {
        std::string name, path;
    };
    void LinksTo(const char* list, const std::vector<Named>& objects) {
        std::vector<std::string> names, paths;
        for (const Named& each : objects) {
            names.push_back(each.name);
            paths.push_back(each.path);
        }
        sheet_.Links(list, paths, names);
    }

    Reading& reading_;
    CaseData& data_;
    ObjectData& column_;
    ColumnParts parts_;
    std::string name_;
    ObjectSheet sheet_;
    std::vector<ObjectData> inner_;
    std::vector<std::string> vessels_;
    std::vector<Named> around_;
};

std::string FreeName(const CaseData& data, std::string name) {
    const auto is_taken = [&](const ObjectData& each) { return each.name == name; };
    while (std::ranges::any_of(data.main.objects, is_taken)) name += '\'';
    return name;
}

}  // namespace

void AddColumnSheets(Reading& reading, CaseData& data) {
    const std::size_t count = data.main.objects.size();
    for (std::size_t i = 0; i < count; ++i) {
        const ObjectData& object = data.main.objects[i];
        if (object.type != words::kDistillation || !HasStages(object)) continue;
        const std::string name = FreeName(data, object.name + " Flowsheet");
        ObjectData sheet = ColumnSheet(reading, data, i, name).Make();
        data.main.objects.push_back(std::move(sheet));
    }
}

}  // namespace fixtop::casehost::importer
