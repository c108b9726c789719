// SPDX-License-Identifier: Apache-2.0
#include "plant.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <stdexcept>

#include "casehost/case_file.h"
#include "fixtop/cursor.h"
#include "fixtop/fixtop.h"

namespace fixtop::bench {

namespace {

using casehost::ObjectData;
using casehost::ValueData;
using casehost::ValueKind;
using casehost::VariableData;
using casehost::VariableSpec;
using casehost::VariableState;
using SpecList = std::vector<std::shared_ptr<const VariableSpec>>;

constexpr int kWideVariables = 60;
const std::vector<std::string> kCompounds = {"Methane", "Ethane", "Propane", "n-Butane",
                                             "Nitrogen"};

std::shared_ptr<const VariableSpec> Real(const char* name, const char* quantity) {
    auto spec = std::make_shared<VariableSpec>();
    spec->name = name;
    spec->quantity = quantity;
    return spec;
}

std::shared_ptr<const VariableSpec> Composition() {
    auto spec = std::make_shared<VariableSpec>();
    spec->name = "Comp Mole Frac";
    spec->number = 501;
    spec->variable_type = 9;
    spec->dimensions = {
        {0, static_cast<int>(kCompounds.size()), casehost::ElementNaming::text, kCompounds}};
    return spec;
}

const SpecList& StreamSpecs() {
    static const SpecList specs = {
        Real("Vapour Fraction", ""),     Real("Temperature", "Temperature"),
        Real("Pressure", "Pressure"),    Real("Molar Flow", "MolarFlow"),
        Real("Mass Flow", "MassFlow"),   Real("Molar Enthalpy", "MolarEnthalpy"),
        Real("Heat Flow", "EnergyFlow"), Composition(),
    };
    return specs;
}

double TemperatureOf(int i) {
    return 20.0 + i * 0.001;
}

ObjectData MakeStream(int i) {
    ObjectData stream;
    stream.name = StreamName(i);
    stream.type = i % 10 == 9 ? "EnergyStreamObject" : "MaterialStreamObject";
    for (const auto& spec : StreamSpecs()) {
        VariableData variable;
        variable.spec = spec;
        const double number = spec->name == "Temperature" ? TemperatureOf(i) : 0.2;
        variable.values.assign(spec->dimensions.empty() ? 1 : kCompounds.size(),
                               ValueData{number, "", VariableState::specified});
        stream.variables.push_back(std::move(variable));
    }
    return stream;
}

ObjectData MakeWideUnit() {
    ObjectData unit;
    unit.name = "Wide";
    unit.type = "TankOpObject";
    for (int i = 0; i < kWideVariables; ++i) {
        VariableData variable;
        variable.spec = Real(("Parameter " + std::to_string(i)).c_str(), "Pressure");
        variable.values = {ValueData{100.0 + i, "", VariableState::specified}};
        unit.variables.push_back(std::move(variable));
    }
    return unit;
}

VariableData MakeArray(const char* name, int length, std::vector<std::string> labels) {
    auto spec = std::make_shared<VariableSpec>();
    spec->name = name + std::to_string(length);
    const auto naming =
        labels.empty() ? casehost::ElementNaming::number : casehost::ElementNaming::text;
    spec->dimensions = {{0, length, naming, std::move(labels)}};
    VariableData variable;
    for (int i = 0; i < length; ++i) {
        variable.values.push_back({i + 0.5, "", VariableState::specified});
    }
    variable.spec = std::move(spec);
    return variable;
}

ObjectData MakeArrayUnit() {
    ObjectData unit;
    unit.name = kArrayUnit;
    unit.type = "TankOpObject";
    for (const int length : kArrayLengths) {
        std::vector<std::string> names;
        for (int i = 0; i < length; ++i) names.push_back(ElementName(i));
        unit.variables.push_back(MakeArray("Numbers ", length, {}));
        unit.variables.push_back(MakeArray("Names ", length, std::move(names)));
    }
    return unit;
}

casehost::CaseData MakePlantWithArrays(int objects) {
    casehost::CaseData plant = MakePlant(objects);
    plant.main.objects.push_back(MakeArrayUnit());
    return plant;
}

std::vector<std::string> SplitAtDots(const std::string& path) {
    std::vector<std::string> names;
    std::size_t from = 0;
    while (from <= path.size() && !path.empty()) {
        const std::size_t dot = std::min(path.find('.', from), path.size());
        names.push_back(path.substr(from, dot - from));
        from = dot + 1;
    }
    return names;
}

Ref<FIEntry> EntryBelow(FIEntry& top, const std::string& path) {
    Ref<FIEntry> entry = Ref<FIEntry>::Share(&top);
    for (const std::string& name : SplitAtDots(path)) {
        Ref<FIContext> context = Ref<FIContext>::Adopt(entry->GetContext());
        Ref<FICursorBase> cursor = Ref<FICursorBase>::Adopt(context->MakeCursor(kChildCursor));
        if (!cursor->SeekName(kFromFirst, name.c_str()))
            throw std::runtime_error("no node " + path);
        entry = Ref<FIEntry>::Adopt(cursor->GetEntry());
    }
    return entry;
}

}  // namespace

std::string StreamName(int i) {
    return "S" + std::to_string(i);
}

std::string ElementName(int i) {
    return "Tray " + std::to_string(i);
}

std::string MiddleStream(int objects) {
    return StreamName(objects / 2);
}

std::string MiddleTemperature(int objects) {
    return FIValue::OfReal(TemperatureOf(objects / 2)).ToText();
}

casehost::CaseData MakePlant(int objects) {
    casehost::CaseData plant;
    plant.name = "plant of " + std::to_string(objects);
    plant.source = "own";
    for (const std::string& name : kCompounds) {
        casehost::CompoundData compound;
        compound.name = name;
        plant.compounds.push_back(compound);
    }
    plant.main.objects.reserve(objects + 1);
    for (int i = 0; i < objects; ++i) plant.main.objects.push_back(MakeStream(i));
    plant.main.objects.push_back(MakeWideUnit());
    return plant;
}

OpenPlant::OpenPlant(int objects) : OpenPlant(MakePlantWithArrays(objects), objects) {}

OpenPlant::OpenPlant(casehost::CaseData plant, int objects)
    : objects_(objects), host_(std::make_unique<casehost::CaseHost>()) {
    host_->Open(std::move(plant));
    FixtopInstallHost(&host_->Services());
    top_ = Ref<FIEntry>::Adopt(GetCombinedEntry(host_->ActiveCase()));
    if (!top_) throw std::runtime_error("no top entry");
}

OpenPlant::~OpenPlant() {
    top_.Reset();
    FixtopInstallHost(nullptr);
}

Ref<FIIteratorBase> OpenPlant::At(const std::string& path) const {
    auto it = Ref<FIIteratorBase>::Adopt(FixtopMakeIterator(top_.Get(), false));
    if (!path.empty() && !it->SeekPath(FIValue(path.c_str()))) {
        throw std::runtime_error("no node " + path);
    }
    return it;
}

HostVariable OpenPlant::InHost(const std::string& object, const std::string& variable) const {
    host::FlowSheetObjectIterator objects = host_->ActiveCase()->MainFlowSheet()->Objects();
    for (host::Viewable* each = objects.Reset(); each; each = objects.Next()) {
        if (each->GetName().Str() != object) continue;
        host::VariableNameIterator rows(each->VariableNames());
        for (auto* row = rows.Reset(); row; row = rows.Next()) {
            if (variable == row->name) return {each, row, row->description};
        }
    }
    throw std::runtime_error("the host has no " + object + "." + variable);
}

Ref<FIContext> OpenPlant::ContextAt(const std::string& path) const {
    return Ref<FIContext>::Adopt(EntryBelow(*top_, path)->GetContext());
}

OpenBatch::OpenBatch(const OpenPlant& plant) : stream_(Ref<FIEntry>::Adopt(nullptr)) {
    Ref<FIContext> streams = plant.ContextAt("appModel.FlowSheetObjects.Streams");
    Ref<FICursorBase> cursor = Ref<FICursorBase>::Adopt(streams->MakeCursor(kChildCursor));
    cursor->Seek(kFromFirst, 0);
    stream_ = Ref<FIEntry>::Adopt(cursor->GetEntry());
    stream_->CanHold();
}

OpenBatch::~OpenBatch() {
    stream_->BeginBatch();
}

namespace {

// One at a time: a large plant takes much memory, and only one host is installed.
std::unique_ptr<OpenPlant>& KeptPlant() {
    static std::unique_ptr<OpenPlant> plant;
    return plant;
}

}  // namespace

void DropPlant() {
    KeptPlant().reset();
}

OpenPlant& PlantOf(int objects) {
    std::unique_ptr<OpenPlant>& plant = KeptPlant();
    if (!plant || plant->Objects() != objects) {
        plant.reset();
        plant = std::make_unique<OpenPlant>(objects);
    }
    return *plant;
}

std::string SavedPlant(int objects) {
    static std::map<int, std::string> files;
    std::string& file = files[objects];
    if (file.empty()) {
        file = (std::filesystem::temp_directory_path() /
                ("fixtop-bench-" + std::to_string(objects) + ".json"))
                   .string();
        const casehost::SaveResult saved = casehost::WriteCaseFile(MakePlant(objects), file);
        if (!saved) throw std::runtime_error(saved.problem.Text());
    }
    return file;
}

void LoadPlant(const std::string& file) {
    casehost::RegisterCaseFiles();
    casehost::CaseHost reader;
    const casehost::OpenResult result = reader.Open(file);
    if (!result) throw std::runtime_error(result.problems.at(0).Text());
}

void ParseJson(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    const nlohmann::json json = nlohmann::json::parse(in);
    if (json.empty()) throw std::runtime_error("the saved plant is empty");
}

void FillMirror(int objects, pugi::xml_document& document) {
    pugi::xml_node sheet =
        document.append_child("Top").append_child("appModel").append_child("FlowSheetObjects");
    pugi::xml_node streams = sheet.append_child("Streams");
    for (int i = 0; i < objects; ++i) {
        pugi::xml_node stream = streams.append_child(StreamName(i).c_str());
        for (const auto& spec : StreamSpecs()) {
            std::string name = spec->name;
            std::erase(name, ' ');
            const double number = name == "Temperature" ? TemperatureOf(i) : 0.2;
            stream.append_child(name.c_str()).text().set(FIValue::OfReal(number).ToText().c_str());
        }
    }
    pugi::xml_node wide = sheet.append_child("UnitOps").append_child("Wide");
    for (int i = 0; i < kWideVariables; ++i) {
        wide.append_child(("Parameter" + std::to_string(i)).c_str()).text().set(100.0 + i);
    }
}

}  // namespace fixtop::bench
