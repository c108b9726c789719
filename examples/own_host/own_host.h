// SPDX-License-Identifier: Apache-2.0
#pragma once

// A simulator's side in small: one case with a flowsheet of streams, which come and go. It includes
// nothing but fixtop/host/; docs/hosts.md goes through it.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "fixtop/host/local_services.h"
#include "object.h"

namespace own {

enum UnitTypes : VarType { kTemperature = 1, kPressure = 2 };

class Stream final : public Object<Viewable> {
 public:
    Stream(const char* name, Viewable* flowsheet, double temperature_C, double pressure_kPa)
        : Object(name, kMaterialStream, flowsheet), values_{temperature_C, pressure_kPa} {
        DescribeRow(0, "Temperature", kTemperature);
        DescribeRow(1, "Pressure", kPressure);
    }
    const LinkedList* VariableNames() override { return &names_; }
    VariableNameInfo* FindVariableName(const VarDescription& variable) override {
        return IsOwn(variable) ? &rows_[variable.Number()] : nullptr;
    }
    double GetRealValue(const VarDescription& variable) override {
        return IsOwn(variable) ? values_[variable.Number()] : kEmptyReal;
    }
    void SetRealValue(const VarDescription& variable, double value) override {
        if (IsOwn(variable)) values_[variable.Number()] = value;
    }

 private:
    static bool IsOwn(const VarDescription& variable) {
        return !variable.IsEmpty() && !variable.NextPart() && variable.Kind() == kPartReal &&
               variable.Number() >= 0 && variable.Number() < 2;
    }
    void DescribeRow(int number, const char* name, VarType unit_type) {
        VarDescription::Facts facts;
        facts.moniker = Text(":Double." + std::to_string(number));
        facts.kind = kPartReal;
        facts.number = number;
        facts.type = facts.unit_type = unit_type;
        rows_[number].name = name;
        rows_[number].description = VarDescription(facts);
        names_.Add(&rows_[number]);
    }
    double values_[2];  // C, kPa
    VariableNameInfo rows_[2];
    List names_;
};

class MainFlowSheet final : public Object<FlowSheet> {
 public:
    explicit MainFlowSheet(Viewable* of_case) : Object("Main", kSimulation, of_case) {}
    FlowSheetObjectIterator Objects() override { return FlowSheetObjectIterator(&objects_); }
    FlowSheetSolver* Solver() override { return nullptr; }

    Stream& Add(const char* name, double temperature_C, double pressure_kPa) {
        streams_.push_back(std::make_unique<Stream>(name, this, temperature_C, pressure_kPa));
        objects_.Add(static_cast<Viewable*>(streams_.back().get()));
        return *streams_.back();
    }
    // It stays readable until Bury.
    void Delete(const Stream& stream) {
        const auto at = std::find_if(streams_.begin(), streams_.end(),
                                     [&](const auto& each) { return each.get() == &stream; });
        objects_.Remove(static_cast<const Viewable*>(&stream));
        deleted_.push_back(std::move(*at));
        streams_.erase(at);
    }
    void Bury() { deleted_.clear(); }
    const std::vector<std::unique_ptr<Stream>>& Streams() const { return streams_; }
    bool Has(std::uint64_t identity) const {
        const auto is_it = [&](const auto& stream) { return stream->Identity() == identity; };
        return Identity() == identity || std::any_of(streams_.begin(), streams_.end(), is_it);
    }

 private:
    std::vector<std::unique_ptr<Stream>> streams_, deleted_;
    List objects_;
};

class Case final : public Object<SimulationCase> {
 public:
    Case() : Object("Plant", kSimulation, nullptr) {}
    FlowSheet* MainFlowSheet() override { return &flowsheet_; }
    BasisManager* Basis() override { return nullptr; }
    const LinkedList* ProcessDataTables() override { return nullptr; }
    const LinkedList* CaseUtilities() override { return nullptr; }
    bool Dynamic() override { return false; }
    bool SimCaseDynamic() override { return false; }
    FlowSheetSolver* MainSolver() override { return nullptr; }
    FlowSheetSolver* ActiveSolver() override { return nullptr; }
    COnlineConnectivityManager* OnlineManager() override { return nullptr; }
    const FileName& GetDocumentName() override { return file_; }
    void SetDocumentName(const FileName& name) override { file_ = name; }
    bool Save() override { return false; }
    bool IsVisible() override { return true; }
    own::MainFlowSheet& Streams() { return flowsheet_; }

 private:
    FileName file_{"plant", ""};
    own::MainFlowSheet flowsheet_{this};
};

class Services final : public HostServices, private Session {
 public:
    // ---- The simulator's own side ----
    Services() { SetLocalServices(this); }
    ~Services() { SetLocalServices(nullptr); }
    Stream& Add(const char* name, double temperature_C, double pressure_kPa) {
        revision_ = NewNumber();
        return case_.Streams().Add(name, temperature_C, pressure_kPa);
    }
    void Delete(const Stream& stream) {
        case_.Streams().Delete(stream);
        revision_ = NewNumber();
    }
    const std::vector<std::unique_ptr<Stream>>& Streams() { return case_.Streams().Streams(); }
    // With no call of the module on the stack.
    void RunLoop() { case_.Streams().Bury(); }

    // ---- What Fixtop asks ----
    unsigned DefaultUnits() override { return 0; }
    const UnitRecord* def_unit(VarType type, unsigned) override {
        return type == kTemperature || type == kPressure ? kUnits[type - 1] : nullptr;
    }
    const UnitRecord* findunit(const char* name, VarType type) override {
        const UnitRecord* units = def_unit(type, 0);
        const auto is_it = [&](const UnitRecord& unit) { return std::string(name) == unit.name; };
        const UnitRecord* found = units ? std::find_if(units, units + 2, is_it) : nullptr;
        return units && found != units + 2 ? found : nullptr;
    }
    double calc_unit(double value, const UnitRecord* unit) override {
        return value == kEmptyReal || !unit ? value : value * unit->factor + unit->offset;
    }
    double calc_ounit(double value, const UnitRecord* unit) override {
        return value == kEmptyReal || !unit ? value : (value - unit->offset) / unit->factor;
    }
    const char* utypetoa(VarType type) override {
        return type == kTemperature ? "Temperature" : type == kPressure ? "Pressure" : "";
    }
    VarType GetUnitConvTypeFromVarType(VariableType) override { return kVariableUnitType; }
    VariableType GetVarTypeFromUnitString(const char*) override { return kEmptyDimensionMarker; }
    void UnitConvList(VarType type) override { walk_ = type; }
    Text GetFirstConvName() override { return NameOf(0); }
    Text GetNextConvName() override { return NameOf(step_ + 1); }
    Text RelativeMoniker(Viewable*, Viewable* to, bool) override {
        if (!to || !to->Type()->IsA(&kStream)) return {};
        return Text("/FlowSht.1/StreamObject.400(") + to->GetName() + ")";
    }
    void GetVariableStatus(Viewable*, const VarDescription&, ModifyState& state, int&) override {
        state = kSpecified;
    }
    const ObjectTypeInfo* FindObjectType(const Text& class_name) override {
        for (const Type* type : {&kStream, &kUnitOp, &kCorrelation, &kMaterialStream}) {
            if (type->ClassName() == class_name) return type;
        }
        return nullptr;
    }
    const ObjectTypeRecords& ObjectTypes() override { return records_; }
    VariableTypes* pVarTypes() override { return nullptr; }
    bool DescribeMoniker(const Text&, VarDescription::Facts&) override { return false; }
    CSpecInfo* NewSpecInfo() override { return nullptr; }
    void DeleteSpecInfo(CSpecInfo*) override {}
    Session* pSession() override { return this; }
    void UpdateViews(Viewable*) override {}
    void SetConfigData(const char*, double, bool) override {}
    Text NumToText(double value) override {
        return value == kEmptyReal ? "" : std::to_string(value);
    }
    void WaitForTurn(unsigned long) override {}
    const std::uint64_t* StructureRevision() override { return &revision_; }
    bool Lives(std::uint64_t identity) override {
        return case_.Identity() == identity || case_.Streams().Has(identity);
    }
    void* IFace_malloc(std::size_t size) override { return std::malloc(size); }
    void* IFace_realloc(void* block, std::size_t size) override {
        return std::realloc(block, size);
    }
    void IFace_free(void* block) override { std::free(block); }

 private:
    SimulationCase* ActiveCase() override { return &case_; }
    ApplicationForm* GetAppForm() override { return nullptr; }
    bool HideDocument(Document*, bool) override { return false; }
    Text SessionText(bool) override { return "own host"; }
    Text NameOf(int step) {
        step_ = step;
        const UnitRecord* first = def_unit(walk_, 0);
        return first && step < 2 ? first[step].name : "";
    }

    // internal = user * factor + offset; the internal unit of each type stands first.
    static constexpr UnitRecord kUnits[][2] = {{{1, 0, "C"}, {1, -273.15, "K"}},
                                               {{1, 0, "kPa"}, {100, 0, "bar"}}};
    const ObjectTypeRecords records_{&kViewable, &kSimulation, &kFlowSheetObject, &kUnitOp,
                                     &kTemplateOp};
    VarType walk_ = 0;
    int step_ = 0;
    std::uint64_t revision_ = NewNumber();
    Case case_;
};

}  // namespace own
