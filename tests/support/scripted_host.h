// SPDX-License-Identifier: Apache-2.0
#pragma once

// A small host under the full control of a test: every answer is a field, every store goes through
// a hook that may refuse it, change the case, or call back into the module.
//
//     scripted::Host host;                       // installs itself
//     auto& feed = host.main.Add("Feed", host.stream);
//     auto& row = feed.AddReal(":Double.501", "Temperature", 25.0);
//
// Objects live as long as the host; removing one takes it out of its list only.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "fixtop/host/services.h"
#include "host/adapter.h"

namespace fixtop::scripted {

// A list whose revision is unique in the process, or 0 throughout.
class List final : public host::LinkedList {
 public:
    void Add(void* element) {
        holders_.push_back(std::make_unique<Holder>());
        holders_.back()->element = element;
        Changed();
    }
    void Remove(const void* element) {
        for (auto it = holders_.begin(); it != holders_.end(); ++it) {
            if ((*it)->element != element) continue;
            holders_.erase(it);
            break;
        }
        Changed();
    }
    // To be called after a rename too.
    void Changed() {
        static std::uint64_t last = 0;
        revision_ = ++last;
        for (std::size_t i = 0; i < holders_.size(); ++i) holders_[i]->index = i;
    }
    void KeepNoRevision() { tracks_ = false; }

    const host::ListHolder* FirstHolder() const override { return At(0); }
    const host::ListHolder* LastHolder() const override { return At(holders_.size() - 1); }
    const host::ListHolder* HolderAfter(const host::ListHolder* holder) const override {
        ++steps;
        return At(static_cast<const Holder*>(holder)->index + 1);
    }
    const host::ListHolder* HolderBefore(const host::ListHolder* holder) const override {
        ++steps;
        return At(static_cast<const Holder*>(holder)->index - 1);
    }
    void* EntryAt(unsigned index) const override {
        const host::ListHolder* holder = At(index);
        return holder ? holder->element : nullptr;
    }
    std::uint64_t Revision() const override { return tracks_ ? revision_ : 0; }

    // Steps made on the list so far.
    mutable long steps = 0;

 private:
    struct Holder : host::ListHolder {
        std::size_t index = 0;
    };
    const host::ListHolder* At(std::size_t index) const {
        return index < holders_.size() ? holders_[index].get() : nullptr;
    }

    std::vector<std::unique_ptr<Holder>> holders_;
    std::uint64_t revision_ = 0;
    bool tracks_ = true;
};

class Type final : public host::ObjectTypeInfo {
 public:
    // Shown as "a" and the class name, so that neither passes for the other.
    Type(const char* class_name, const Type* base)
        : class_name_(class_name), display_name_(std::string("a ") + class_name), base_(base) {}
    bool IsA(const host::ObjectTypeInfo* other) const override {
        return this == other || (base_ && base_->IsA(other));
    }
    const host::Text& DisplayName() const override { return display_name_; }
    const host::Text& ClassName() const override { return class_name_; }

 private:
    host::Text class_name_;
    host::Text display_name_;
    const Type* base_;
};

class Enumeration final : public host::VarEnumInfo {
 public:
    explicit Enumeration(std::vector<std::string> names) : names_(std::move(names)) {
        for (const std::string& name : names_) entries_.push_back({name.c_str()});
    }
    const host::VarEnumEntry* Reset() override { return At(at_ = 0); }
    const host::VarEnumEntry* Next() override { return At(++at_); }
    const host::VarEnumEntry* FindEntry(long ordinal) override { return At(ordinal); }
    const host::VarEnumEntry* FindEntry(const host::Text& name, int& ordinal) override {
        for (std::size_t i = 0; i < names_.size(); ++i) {
            if (names_[i] != name.Str()) continue;
            ordinal = static_cast<int>(i);
            return &entries_[i];
        }
        return nullptr;
    }

 private:
    const host::VarEnumEntry* At(long i) const {
        return i >= 0 && i < static_cast<long>(entries_.size()) ? &entries_[i] : nullptr;
    }
    std::vector<std::string> names_;
    std::vector<host::VarEnumEntry> entries_;
    long at_ = 0;
};

struct Row final : host::VariableNameInfo {
    std::string own_name;
    host::Text text;
    std::unique_ptr<Enumeration> enumeration;
    std::vector<host::VarDescription> offsets;

    host::Text TextDescription() const override { return text; }
    host::VarEnumInfo* GetEnumInfo(host::Viewable*) const override { return enumeration.get(); }
};

// What objects of all interfaces have. Values are kept by filled moniker.
class ObjectData {
 public:
    host::Text name;
    const Type* type = nullptr;
    host::Viewable* owner = nullptr;
    List rows;
    bool has_rows = true;
    std::vector<std::unique_ptr<Row>> row_storage;
    std::map<std::string, double> reals;
    std::map<std::string, std::string> texts;
    std::map<std::string, host::Viewable*> attachments;
    // Objects that multi-part addresses lead to.
    std::map<std::string, host::Viewable*> resolved;
    std::map<std::string, host::DimInfo> dimensions;
    host::VariableType variable_unit_type = host::kEmptyDimensionMarker;
    int status = 0;
    host::CSpecSource* spec_source = nullptr;
    host::FlowSheet* inner = nullptr;
    host::ProcessStream* stream = nullptr;
    bool refuse_stores = false;
    // Runs in the middle of a store, before it takes effect.
    std::function<void(const std::string& moniker)> in_store;
    std::vector<std::string> stores;

    Row& AddRow(const char* moniker, const char* row_name, int value_kind,
                host::VarDescription::Facts facts = {}) {
        auto row = std::make_unique<Row>();
        row->own_name = row_name;
        row->name = row->own_name.c_str();
        facts.moniker = host::Text(moniker);
        row->description = host::VarDescription(facts);
        row->value_kind = value_kind;
        row->text = host::Text(moniker);
        row_storage.push_back(std::move(row));
        rows.Add(static_cast<host::VariableNameInfo*>(row_storage.back().get()));
        return *row_storage.back();
    }
    Row& AddReal(const char* moniker, const char* row_name, double value,
                 host::VarType unit_type = host::kVariableUnitType) {
        host::VarDescription::Facts facts;
        facts.kind = host::kPartReal;
        facts.unit_type = unit_type;
        reals[moniker] = value;
        return AddRow(moniker, row_name, host::kReal, facts);
    }
    Row& AddText(const char* moniker, const char* row_name, const char* value) {
        texts[moniker] = value;
        return AddRow(moniker, row_name, host::kText);
    }
    Row& AddAttachment(const char* moniker, const char* row_name, host::Viewable* attached) {
        if (attached) attachments[moniker] = attached;
        return AddRow(moniker, row_name, host::kAttachment);
    }
};

template <class Base>
class Object : public Base, public ObjectData {
 public:
    virtual ~Object() = default;

    const host::Text& GetName() override { return name; }
    double GetRealValue(const host::VarDescription& variable) override {
        const auto found = reals.find(variable.GetFilledMoniker().Str());
        return found == reals.end() ? host::kEmptyReal : found->second;
    }
    void SetRealValue(const host::VarDescription& variable, double value) override {
        const std::string moniker = variable.GetFilledMoniker().Str();
        stores.push_back(moniker);
        if (in_store) in_store(moniker);
        if (!refuse_stores) reals[moniker] = value;
    }
    host::Text GetTextValue(const host::VarDescription& variable) override {
        return host::Text(texts[variable.GetFilledMoniker().Str()]);
    }
    void SetTextValue(const host::VarDescription& variable, host::Text value) override {
        const std::string moniker = variable.GetFilledMoniker().Str();
        stores.push_back(moniker);
        if (in_store) in_store(moniker);
        if (!refuse_stores) texts[moniker] = value.Str();
    }
    const host::LinkedList* VariableNames() override { return has_rows ? &rows : nullptr; }
    host::VariableNameInfo* FindVariableName(const host::VarDescription& variable) override {
        for (const auto& row : row_storage) {
            if (row->description.IsEqual(variable, true)) return row.get();
        }
        return nullptr;
    }
    host::VarEnumInfo* GetVariableEnum(host::VariableNameInfo* row) override {
        return row->GetEnumInfo(this);
    }
    host::Viewable* ResolveVariableOwner(const host::VarDescription& variable) override {
        const auto found = resolved.find(variable.GetMoniker().Str());
        return found == resolved.end() ? nullptr : found->second;
    }
    void GetVariableDimensions(const host::VarDescription& variable, host::DimInfo& out) override {
        out = dimensions[variable.GetMoniker().Str()];
    }
    host::Viewable* GetOwner(const host::ObjectTypeInfo* wanted) override {
        host::Viewable* above = owner;
        while (above && !(above->Type() && above->Type()->IsA(wanted)))
            above = above->GetOwner(wanted);
        return above;
    }
    bool IsSameFlowSheet(host::Viewable* flowsheet) override { return owner == flowsheet; }
    host::VariableType GetVariableUnitType(const host::VarDescription&) override {
        return variable_unit_type;
    }
    host::CSpecSource* GetSpecSource() override { return spec_source; }
    host::FlowSheet* SubFlowSheet() override { return inner; }
    const host::ObjectTypeInfo* Type() const override { return type; }
    host::Viewable::Status GetMyStatusCondition() override {
        return static_cast<host::Viewable::Status>(status);
    }
    host::Viewable* GetVariableAttachment(const host::VarDescription& variable) override {
        const auto found = attachments.find(variable.GetFilledMoniker().Str());
        return found == attachments.end() ? nullptr : found->second;
    }
    host::ProcessStream* AsProcessStream() override { return stream; }
};

using Plain = Object<host::Viewable>;

// Counts the calls of composition editing.
class Stream final : public host::ProcessStream {
 public:
    void BeginDeferCompNormalize() override { calls += "begin "; }
    void EndDeferCompNormalize() override { calls += "end "; }
    void StartCompositionEditSession() override { calls += "session "; }
    std::string calls;
};

class Solver final : public Object<host::FlowSheetSolver> {
 public:
    void Holding(bool hold) override {
        holding = hold;
        calls += hold ? "hold " : "release ";
    }
    bool NeedsToRun() override { return needs_to_run; }
    bool IsSolving() override { return solving; }
    void SolveTask() override {
        calls += "task ";
        if (on_task) on_task();
    }
    void SolveOnce() override { calls += "once "; }
    bool IsHolding() override { return holding; }
    bool Stop() override { return stop; }
    bool Busy() override { return busy; }
    bool Pending() override { return pending; }
    bool PauseRequested() override { return pause_requested; }
    bool Finished() override { return finished; }

    bool holding = true;
    bool needs_to_run = true;
    bool solving = false;
    bool stop = false;
    bool busy = false;
    bool pending = false;
    bool pause_requested = false;
    bool finished = false;
    std::function<void()> on_task;
    std::string calls;
};

class FlowSheet final : public Object<host::FlowSheet> {
 public:
    host::FlowSheetObjectIterator Objects() override {
        return host::FlowSheetObjectIterator(&objects);
    }
    host::FlowSheetSolver* Solver() override { return solver; }

    Plain& Add(const char* object_name, const scripted::Type& object_type) {
        storage.push_back(std::make_unique<Plain>());
        Plain& object = *storage.back();
        object.name = host::Text(object_name);
        object.type = &object_type;
        object.owner = this;
        objects.Add(static_cast<host::Viewable*>(&object));
        return object;
    }

    List objects;
    std::vector<std::unique_ptr<Plain>> storage;
    host::FlowSheetSolver* solver = nullptr;
};

class Reactions final : public host::ReactionPackageManager {
 public:
    int ReactionCount() override { return static_cast<int>(reactions.size()); }
    host::Reaction* RxnNumber(int number) override {
        return number >= 0 && number < ReactionCount() ? reactions[number] : nullptr;
    }
    std::vector<host::Reaction*> reactions;
};

class Basis final : public Object<host::BasisManager> {
 public:
    host::ReactionPackageManager* ReactionPackages() override { return reactions; }
    host::ReactionPackageManager* reactions = nullptr;
};

class Published final : public Object<host::RTIVariable> {
 public:
    double GetValue() override { return value; }
    void SetValue(double number) override {
        if (!refuse_stores) value = number;
    }
    host::Text UnitText() override { return unit; }

    double value = host::kEmptyReal;
    host::Text unit;
};

class Manager final : public Object<host::COnlineConnectivityManager> {
 public:
    ~Manager() {
        if (callback) callback->Release();
    }
    void put_ModelCallback(host::IModelCallback* given) override {
        if (given) given->AddRef();
        if (callback) callback->Release();
        callback = given;
    }
    host::IModelCallback* ModelCallback() override { return callback; }
    host::RTIVariable* AsPublished(host::Viewable* object) override {
        return dynamic_cast<Published*>(object);
    }
    // Publishes a variable under its number.
    Published& Publish(int number, const char* variable_name, double value) {
        published.push_back(std::make_unique<Published>());
        Published& variable = *published.back();
        variable.name = host::Text(variable_name);
        variable.value = value;
        resolved["RTIVariable.500." + std::to_string(number)] = &variable;
        return variable;
    }
    void SetPublishedRange(int low, int high) {
        host::DimInfo& bounds = dimensions["RTIVariable.500"];
        bounds.count = 1;
        bounds.low[0] = low;
        bounds.high[0] = high;
    }

    std::vector<std::unique_ptr<Published>> published;
    host::IModelCallback* callback = nullptr;
};

class Case final : public Object<host::SimulationCase> {
 public:
    host::FlowSheet* MainFlowSheet() override { return main; }
    host::BasisManager* Basis() override { return basis; }
    const host::LinkedList* ProcessDataTables() override { return tables; }
    const host::LinkedList* CaseUtilities() override { return utilities; }
    bool Dynamic() override { return dynamic; }
    bool SimCaseDynamic() override { return case_dynamic; }
    host::FlowSheetSolver* MainSolver() override { return main_solver; }
    host::FlowSheetSolver* ActiveSolver() override { return active_solver; }
    host::COnlineConnectivityManager* OnlineManager() override { return manager; }
    const host::FileName& GetDocumentName() override { return document; }
    void SetDocumentName(const host::FileName& file) override { document = file; }
    bool Save() override {
        ++saves;
        return true;
    }
    bool IsVisible() override { return visible; }

    host::FlowSheet* main = nullptr;
    host::BasisManager* basis = nullptr;
    List* tables = nullptr;
    List* utilities = nullptr;
    bool dynamic = false;
    bool case_dynamic = false;
    host::FlowSheetSolver* main_solver = nullptr;
    host::FlowSheetSolver* active_solver = nullptr;
    host::COnlineConnectivityManager* manager = nullptr;
    host::FileName document;
    int saves = 0;
    bool visible = true;
};

class Form final : public host::ApplicationForm {
 public:
    void GetWindowPlacement(host::WindowPlacement& out) override { out.show_state = show_state; }
    void SetWindowPlacement(const host::WindowPlacement& placement) override {
        show_state = placement.show_state;
        *window_calls += "window=" + std::to_string(show_state) + " ";
    }
    int show_state = 1;
    std::string* window_calls = nullptr;
};

class Session final : public host::Session {
 public:
    host::SimulationCase* ActiveCase() override { return active; }
    host::ApplicationForm* GetAppForm() override { return form; }
    bool HideDocument(host::Document* document, bool hide) override {
        auto* hidden = static_cast<Case*>(static_cast<host::SimulationCase*>(document));
        hidden->visible = !hide;
        *window_calls += hide ? "hide " : "show ";
        if (hide && deactivates) active = nullptr;
        return true;
    }
    host::Text SessionText(bool full) override { return host::Text(full ? "full text" : "text"); }

    host::SimulationCase* active = nullptr;
    host::ApplicationForm* form = nullptr;
    bool deactivates = true;
    std::string* window_calls = nullptr;
};

class SpecInfo final : public host::CSpecInfo {
 public:
    void SetOwner(host::Viewable* given) override { owner = given; }
    void SetReaderOptions(const host::CaseReaderOptions* given) override { options = given; }
    const host::LinkedList* Elements() const override { return &elements; }
    std::size_t CollectionCount() const override { return collection_count; }

    host::CSpecElement& Add(const char* tag) {
        storage.push_back(std::make_unique<host::CSpecElement>());
        host::CSpecElement& element = *storage.back();
        element.tag = host::Text(tag);
        elements.Add(&element);
        ++collection_count;
        return element;
    }

    host::Viewable* owner = nullptr;
    const host::CaseReaderOptions* options = nullptr;
    List elements;
    std::vector<std::unique_ptr<host::CSpecElement>> storage;
    std::size_t collection_count = 0;
};

// Stores are told in `calls`.
class ProcessVariable final : public host::ProcessVariable {
 public:
    ProcessVariable() = default;
    ProcessVariable(double number, unsigned bits) {
        value = number;
        status_bits = bits;
    }
    bool CanSpecify() override { return can_specify; }
    void SetSpecified(double number) override {
        calls += "specified ";
        value = number;
    }
    void SetCalculated(double number) override {
        calls += "calculated ";
        value = number;
    }

    bool can_specify = true;
    std::string calls;
};

// Every type has the units of its own number, but those from 100 on, which are not known.
class VariableTypes final : public host::VariableTypes, public host::VariableInfo {
 public:
    host::VariableInfo* FindVarInfo(host::VariableType type) override {
        asked_ = type;
        return type < 100 ? this : nullptr;
    }
    host::VariableType UnitLookupType() const override { return asked_; }

 private:
    host::VariableType asked_ = 0;
};

class SpecSource final : public host::CSpecSource {
 public:
    bool FillSpecInfo(host::CSpecInfo* info) override {
        last = static_cast<SpecInfo*>(info);
        ++fills;
        if (fill) fill(*last);
        return fills_well;
    }
    std::function<void(SpecInfo&)> fill;
    SpecInfo* last = nullptr;
    int fills = 0;
    bool fills_well = true;
};

// Unit types: 1 "Temperature" (C internal, F, K), 2 "Pressure" (kPa internal, bar).
struct UnitType {
    host::VarType type;
    const char* name;
    std::vector<host::UnitRecord> units;
};

class Host final : public host::HostServices {
 public:
    Host() {
        simulation_case.type = &simulation_object;
        main.type = &simulation_object;
        main.name = host::Text("Main");
        main.owner = nullptr;
        main.solver = &solver;
        solver.type = &viewable;
        simulation_case.main = &main;
        simulation_case.main_solver = simulation_case.active_solver = &solver;
        simulation_case.manager = &manager;
        simulation_case.document = host::FileName(host::Text("/cases/plant.case"), host::Text());
        session.active = &simulation_case;
        session.form = &form;
        session.window_calls = form.window_calls = &window_calls;
        records.ViewableObject = &viewable;
        records.SimulationObjectObject = &simulation_object;
        records.FlowSheetObjectObject = &flowsheet_object;
        records.UnitOpObject = &unit_op;
        records.TemplateOpObject = &template_op;
        TheAdapter().Install(this);
    }
    ~Host() { TheAdapter().Install(nullptr); }

    unsigned DefaultUnits() override { return unit_set; }
    const host::UnitRecord* def_unit(host::VarType wanted, unsigned set) override {
        const UnitType* found = FindUnitType(wanted);
        return found ? &found->units[set] : nullptr;
    }
    const host::UnitRecord* findunit(const char* name, host::VarType wanted) override {
        const UnitType* found = FindUnitType(wanted);
        for (std::size_t i = 0; found && i < found->units.size(); ++i) {
            if (std::strcmp(found->units[i].name, name) == 0) return &found->units[i];
        }
        return nullptr;
    }
    double calc_unit(double value, const host::UnitRecord* unit) override {
        return value * unit->factor + unit->offset;
    }
    double calc_ounit(double value, const host::UnitRecord* unit) override {
        return (value - unit->offset) / unit->factor;
    }
    const char* utypetoa(host::VarType wanted) override {
        const UnitType* found = FindUnitType(wanted);
        return found ? found->name : "";
    }
    host::VarType GetUnitConvTypeFromVarType(host::VariableType variable_type) override {
        return variable_type == host::kEmptyDimensionMarker ? host::kVariableUnitType
                                                            : variable_type;
    }
    // The types of variables are those of their units.
    host::VariableType GetVarTypeFromUnitString(const char* name) override {
        for (const UnitType& each : unit_types) {
            if (findunit(name, each.type)) return each.type;
        }
        return host::kEmptyDimensionMarker;
    }
    void UnitConvList(host::VarType wanted) override {
        walked_ = FindUnitType(wanted);
        at_ = 0;
    }
    host::Text GetFirstConvName() override { return UnitName(at_ = 0); }
    host::Text GetNextConvName() override { return UnitName(++at_); }

    host::Text RelativeMoniker(host::Viewable* from, host::Viewable* to, bool full) override {
        always_from_case = always_from_case && !from;
        if (!to) return host::Text();
        const auto given = monikers.find(to);
        if (given != monikers.end()) return host::Text(given->second);
        const std::string own = to->GetName().Str();
        return host::Text(full ? "/" + own + "(" + own + ")" : "/" + own);
    }
    void GetVariableStatus(host::Viewable* object, const host::VarDescription& variable,
                           host::ModifyState& state, int&) override {
        status_asked_of = object;
        const auto found = states.find(variable.GetFilledMoniker().Str());
        if (found != states.end()) state = static_cast<host::ModifyState>(found->second);
    }
    const host::ObjectTypeInfo* FindObjectType(const host::Text& class_name) override {
        for (const Type* each : {&stream, &unit_op, &correlation}) {
            if (each->ClassName() == class_name) return each;
        }
        return nullptr;
    }
    const host::ObjectTypeRecords& ObjectTypes() override { return records; }
    host::VariableTypes* pVarTypes() override { return knows_types ? &variable_types : nullptr; }
    bool DescribeMoniker(const host::Text& moniker, host::VarDescription::Facts& out) override {
        const auto found = described.find(moniker.Str());
        if (found != described.end()) out.type = found->second;
        return found != described.end();
    }
    host::CSpecInfo* NewSpecInfo() override {
        ++spec_infos;
        return new SpecInfo;
    }
    void DeleteSpecInfo(host::CSpecInfo* info) override {
        --spec_infos;
        delete static_cast<SpecInfo*>(info);
    }
    host::Session* pSession() override { return has_session ? &session : nullptr; }
    void UpdateViews(host::Viewable* object) override {
        window_calls += object ? "update one " : "update ";
    }
    void SetConfigData(const char* key, double value, bool flag) override {
        config +=
            std::string(key) + "=" + std::to_string(static_cast<int>(value)) + (flag ? "! " : " ");
    }
    host::Text NumToText(double value) override { return host::Text(std::to_string(value)); }
    void WaitForTurn(unsigned long milliseconds) override {
        turns += milliseconds == 0 ? 1 : 1000;
        if (on_turn) on_turn(turns);
    }
    void* IFace_malloc(std::size_t size) override { return std::malloc(size); }
    void* IFace_realloc(void* block, std::size_t size) override {
        return std::realloc(block, size);
    }
    void IFace_free(void* block) override { std::free(block); }

    const Type viewable{"ViewableObject", nullptr};
    const Type simulation_object{"SimulationObjectObject", &viewable};
    const Type flowsheet_object{"FlowSheetObjectObject", &simulation_object};
    const Type stream{"StreamObject", &flowsheet_object};
    const Type unit_op{"UnitOpObject", &flowsheet_object};
    const Type template_op{"TemplateOpObject", &unit_op};
    const Type special_template{"ColumnOpObject", &template_op};
    const Type utility{"UtilityObject", &viewable};
    const Type correlation{"HovexCorrelationObject", &viewable};

    host::ObjectTypeRecords records;
    Solver solver;
    FlowSheet main;
    Manager manager;
    Case simulation_case;
    Form form;
    Session session;
    bool has_session = true;
    bool always_from_case = true;
    std::map<host::Viewable*, std::string> monikers;
    std::map<std::string, int> states;
    // The object whose variable the state was last asked of.
    const host::Viewable* status_asked_of = nullptr;
    VariableTypes variable_types;
    bool knows_types = true;
    // Variable types by moniker.
    std::map<std::string, host::VariableType> described;
    int spec_infos = 0;
    // What was done to documents, views and the window, in order.
    std::string window_calls;
    unsigned unit_set = 0;  // its default units are those at this place of the lists
    int turns = 0;
    std::function<void(int turn)> on_turn;
    std::string config;
    std::vector<UnitType> unit_types = {
        {1,
         "Temperature",
         {{1.0, 0.0, "C"}, {5.0 / 9.0, -32.0 * 5.0 / 9.0, "F"}, {1.0, -273.15, "K"}}},
        {2, "Pressure", {{1.0, 0.0, "kPa"}, {100.0, 0.0, "bar"}}},
    };

 private:
    const UnitType* FindUnitType(host::VarType wanted) const {
        for (const UnitType& each : unit_types) {
            if (each.type == wanted) return &each;
        }
        return nullptr;
    }
    host::Text UnitName(std::size_t i) const {
        return walked_ && i < walked_->units.size() ? host::Text(walked_->units[i].name)
                                                    : host::Text();
    }

    const UnitType* walked_ = nullptr;
    std::size_t at_ = 0;
};

}  // namespace fixtop::scripted
