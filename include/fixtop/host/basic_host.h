// SPDX-License-Identifier: Apache-2.0
#pragma once

// What most hosts have alike, for those who begin with one: records of classes, a list, and
// objects, a case and services that answer "none" to whatever they don't override. None of it is
// required; the module knows the interfaces alone.
//
// Ownership: as the interfaces say. Threads: the one that runs the simulation.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "fixtop/host/local_services.h"
#include "fixtop/host/services.h"

namespace fixtop::host {

// The record of a class, which outlives all objects of it.
struct BasicType final : ObjectTypeInfo {
    BasicType(const char* word, const BasicType* parent) : word_(word), parent_(parent) {}
    bool IsA(const ObjectTypeInfo* other) const override {
        return this == other || (parent_ && parent_->IsA(other));
    }
    const Text& DisplayName() const override { return word_; }
    const Text& ClassName() const override { return word_; }

 private:
    Text word_;
    const BasicType* parent_;
};

// The classes that the module looks for.
inline const BasicType kViewableType{"ViewableObject", nullptr};
inline const BasicType kSimulationType{"SimulationObjectObject", &kViewableType};
inline const BasicType kFlowSheetObjectType{"FlowSheetObjectObject", &kSimulationType};
inline const BasicType kUnitOpType{"UnitOpObject", &kFlowSheetObjectType};
inline const BasicType kTemplateOpType{"TemplateOpObject", &kUnitOpType};
inline const BasicType kCorrelationType{"HovexCorrelationObject", &kViewableType};
inline const BasicType kStreamType{"StreamObject", &kFlowSheetObjectType};
inline const BasicType kMaterialStreamType{"MaterialStreamObject", &kStreamType};

// A number that was never given before: of an object, a revision.
inline std::uint64_t NewNumber() {
    static std::uint64_t last = 0;
    return ++last;
}

// A list of pointers, which it does not own.
class BasicList final : public LinkedList {
 public:
    void Add(void* element) {
        holders_.push_back({element});
        revision_ = NewNumber();
    }
    void Remove(const void* element) {
        std::erase_if(holders_, [&](const ListHolder& each) { return each.element == element; });
        revision_ = NewNumber();
    }
    const ListHolder* FirstHolder() const override { return At(0); }
    const ListHolder* LastHolder() const override { return At(holders_.size() - 1); }
    const ListHolder* HolderAfter(const ListHolder* holder) const override {
        return At(holder - holders_.data() + 1);
    }
    const ListHolder* HolderBefore(const ListHolder* holder) const override {
        return At(holder - holders_.data() - 1);
    }
    void* EntryAt(unsigned index) const override {
        return At(index) ? At(index)->element : nullptr;
    }
    std::uint64_t Revision() const override { return revision_; }

 private:
    // What is before the first wraps round, far behind the last.
    const ListHolder* At(std::size_t i) const {
        return i < holders_.size() ? &holders_[i] : nullptr;
    }
    std::vector<ListHolder> holders_;
    std::uint64_t revision_ = NewNumber();
};

// An object with a name, a class, an owner and a number, and nothing else.
template <class Base>
class BasicObject : public Base {
 public:
    BasicObject(const char* name, const BasicType& type, Viewable* owner)
        : name_(name), type_(type), owner_(owner) {}
    const Text& GetName() override { return name_; }
    const ObjectTypeInfo* Type() const override { return &type_; }
    std::uint64_t Identity() const override { return identity_; }
    Viewable* GetOwner(const ObjectTypeInfo* type) override {
        for (Viewable* at = owner_; at; at = at->GetOwner(&kViewableType)) {
            if (at->Type()->IsA(type)) return at;
        }
        return nullptr;
    }
    double GetRealValue(const VarDescription&) override { return kEmptyReal; }
    void SetRealValue(const VarDescription&, double) override {}
    Text GetTextValue(const VarDescription&) override { return {}; }
    void SetTextValue(const VarDescription&, Text) override {}
    const LinkedList* VariableNames() override { return nullptr; }
    VariableNameInfo* FindVariableName(const VarDescription&) override { return nullptr; }
    VarEnumInfo* GetVariableEnum(VariableNameInfo*) override { return nullptr; }
    Viewable* ResolveVariableOwner(const VarDescription&) override { return nullptr; }
    void GetVariableDimensions(const VarDescription&, DimInfo& out) override { out = {}; }
    bool IsSameFlowSheet(Viewable* flowsheet) override { return flowsheet == owner_; }
    VariableType GetVariableUnitType(const VarDescription&) override {
        return kEmptyDimensionMarker;
    }
    CSpecSource* GetSpecSource() override { return nullptr; }
    FlowSheet* SubFlowSheet() override { return nullptr; }
    Viewable::Status GetMyStatusCondition() override { return Viewable::kOk; }
    Viewable* GetVariableAttachment(const VarDescription&) override { return nullptr; }

 protected:
    ~BasicObject() = default;

 private:
    Text name_;
    const BasicType& type_;
    Viewable* owner_;
    const std::uint64_t identity_ = NewNumber();
};

// A case in steady state, without solver, basis, tables and utilities, that is not saved.
class BasicCase : public BasicObject<SimulationCase> {
 public:
    // `file` is what clients see as its document.
    BasicCase(const char* name, FileName file)
        : BasicObject(name, kSimulationType, nullptr), file_(std::move(file)) {}
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

 protected:
    ~BasicCase() = default;

 private:
    FileName file_;
};

// A unit type of a host: its number, the name of its quantity, and its units, the default one
// first. A value in the internal unit is value * factor + offset of one in the unit.
struct BasicUnits {
    VarType type;
    const char* quantity;
    std::vector<UnitRecord> units;
};

// Services over a table of units, with one unit set, the plain heap, every variable specified, and
// a session whose active case a derived class answers. They are the local services while they live.
class BasicServices : public HostServices, protected Session {
 public:
    explicit BasicServices(std::vector<BasicUnits> units) : units_(std::move(units)) {
        SetLocalServices(this);
    }
    BasicServices(const BasicServices&) = delete;
    BasicServices& operator=(const BasicServices&) = delete;

    unsigned DefaultUnits() override { return 0; }
    const UnitRecord* def_unit(VarType type, unsigned) override {
        const auto units = UnitsOf(type);
        return units.empty() ? nullptr : units.data();
    }
    const UnitRecord* findunit(const char* name, VarType type) override {
        for (const UnitRecord& unit : UnitsOf(type)) {
            if (std::string(name) == unit.name) return &unit;
        }
        return nullptr;
    }
    double calc_unit(double value, const UnitRecord* unit) override {
        return value == kEmptyReal || !unit ? value : value * unit->factor + unit->offset;
    }
    double calc_ounit(double value, const UnitRecord* unit) override {
        return value == kEmptyReal || !unit ? value : (value - unit->offset) / unit->factor;
    }
    const char* utypetoa(VarType type) override {
        const BasicUnits* found = Find(type);
        return found ? found->quantity : "";
    }
    VarType GetUnitConvTypeFromVarType(VariableType) override { return kVariableUnitType; }
    VariableType GetVarTypeFromUnitString(const char*) override { return kEmptyDimensionMarker; }
    void UnitConvList(VarType type) override { walked_ = UnitsOf(type); }
    Text GetFirstConvName() override { return ConvName(0); }
    Text GetNextConvName() override { return ConvName(step_ + 1); }
    Text RelativeMoniker(Viewable*, Viewable*, bool) override { return {}; }
    void GetVariableStatus(Viewable*, const VarDescription&, ModifyState& state, int&) override {
        state = kSpecified;
    }
    const ObjectTypeInfo* FindObjectType(const Text& class_name) override {
        for (const BasicType* type :
             {&kStreamType, &kUnitOpType, &kCorrelationType, &kMaterialStreamType}) {
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
    void* IFace_malloc(std::size_t size) override { return std::malloc(size); }
    void* IFace_realloc(void* block, std::size_t size) override {
        return std::realloc(block, size);
    }
    void IFace_free(void* block) override { std::free(block); }

 protected:
    ~BasicServices() { SetLocalServices(nullptr); }

    ApplicationForm* GetAppForm() override { return nullptr; }
    bool HideDocument(Document*, bool) override { return false; }
    Text SessionText(bool) override { return {}; }

 private:
    const BasicUnits* Find(VarType type) const {
        const auto is_it = [type](const BasicUnits& each) { return each.type == type; };
        const auto found = std::find_if(units_.begin(), units_.end(), is_it);
        return found == units_.end() ? nullptr : &*found;
    }
    std::span<const UnitRecord> UnitsOf(VarType type) const {
        const BasicUnits* found = Find(type);
        return found ? std::span<const UnitRecord>(found->units) : std::span<const UnitRecord>();
    }
    Text ConvName(std::size_t step) {
        step_ = step;
        return step < walked_.size() ? walked_[step].name : "";
    }

    const std::vector<BasicUnits> units_;
    const ObjectTypeRecords records_{&kViewableType, &kSimulationType, &kFlowSheetObjectType,
                                     &kUnitOpType, &kTemplateOpType};
    std::span<const UnitRecord> walked_;
    std::size_t step_ = 0;
};

}  // namespace fixtop::host
