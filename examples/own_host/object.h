// SPDX-License-Identifier: Apache-2.0
#pragma once

// What every host needs alike: classes, lists, and an object that answers "none" to all but its
// name, its class and its owner.

#include <algorithm>
#include <cstdint>
#include <vector>

#include "fixtop/host/services.h"

namespace own {

using namespace fixtop::host;

// One record a class; they are compared by address.
struct Type final : ObjectTypeInfo {
    Type(const char* word, const Type* parent) : word_(word), parent_(parent) {}
    bool IsA(const ObjectTypeInfo* other) const override {
        return this == other || (parent_ && parent_->IsA(other));
    }
    const Text& DisplayName() const override { return word_; }
    const Text& ClassName() const override { return word_; }
    Text word_;
    const Type* parent_;
};

inline const Type kViewable{"ViewableObject", nullptr};
inline const Type kSimulation{"SimulationObjectObject", &kViewable};
inline const Type kFlowSheetObject{"FlowSheetObjectObject", &kSimulation};
inline const Type kUnitOp{"UnitOpObject", &kFlowSheetObject};
inline const Type kTemplateOp{"TemplateOpObject", &kUnitOp};
inline const Type kCorrelation{"HovexCorrelationObject", &kViewable};
inline const Type kStream{"StreamObject", &kFlowSheetObject};
inline const Type kMaterialStream{"MaterialStreamObject", &kStream};

// Numbers that were never given before: of objects, of revisions.
inline std::uint64_t NewNumber() {
    static std::uint64_t last = 0;
    return ++last;
}

class List final : public LinkedList {
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

// What every object answers: here most of it is "none".
template <class Base>
class Object : public Base {
 public:
    Object(const char* name, const Type& type, Viewable* owner)
        : name_(name), type_(type), owner_(owner) {}
    const Text& GetName() override { return name_; }
    const ObjectTypeInfo* Type() const override { return &type_; }
    std::uint64_t Identity() const override { return identity_; }
    Viewable* GetOwner(const ObjectTypeInfo* type) override {
        for (Viewable* at = owner_; at; at = at->GetOwner(&kViewable)) {
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
    ~Object() = default;

 private:
    Text name_;
    const own::Type& type_;
    Viewable* owner_;
    const std::uint64_t identity_ = NewNumber();
};

}  // namespace own
