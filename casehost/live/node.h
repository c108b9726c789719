// SPDX-License-Identifier: Apache-2.0
#pragma once

// Node: what every live object of a case is, whatever face it shows to clients: owner, class, name,
// values, status. NodeOf puts it behind one of the host's abstract classes.

#include <cmath>
#include <span>

#include "casehost/case_data.h"
#include "casehost/store_watch.h"
#include "fixtop/host/viewable.h"
#include "live/identity.h"
#include "live/shape.h"
#include "naming/object_type.h"

namespace fixtop::casehost {

class Case;
class FlowsheetNode;

// What all nodes of a case share.
struct CaseContext {
    Case* owner = nullptr;
    StoreWatch* watch = nullptr;
    // Results that were recorded can't be computed again: they stay when they are stale.
    bool keeps_results = false;
};

// Readers see twelve digits and store what they have seen: a number that differs from a stored one
// only beyond these is the same.
inline bool IsSameNumber(double stored, double given) {
    constexpr double kRounding = 1e-11;
    if (stored == kEmpty || given == kEmpty) return stored == given;
    return std::abs(stored - given) <= kRounding * std::abs(stored);
}

// One stored value. The number of a real or the ordinal of an enumeration, or the attached object;
// texts stand in the node's text table.
struct Cell {
    union {
        double number;
        class Node* target;
    };
    std::int32_t text = -1;
    std::uint8_t state = static_cast<std::uint8_t>(VariableState::missing);

    Cell() : number(kEmpty) {}
};

class Node {
 public:
    Node(CaseContext& context, Node* owner, const ObjectType* type, std::string name);
    virtual ~Node() = default;
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    // The face that clients hold.
    virtual host::Viewable* View() = 0;
    // Null for anything that is not of a case host.
    static Node* Of(host::Viewable* view) { return dynamic_cast<Node*>(view); }

    const host::Text& Name() const { return name_; }
    void SetName(std::string name) { name_ = host::Text(std::move(name)); }
    const ObjectType* Class() const { return type_; }
    Node* Owner() const { return owner_; }
    Case& OwnerCase() const { return *context_->owner; }
    // The flowsheet inside a template operation; null for any other node and for one without.
    virtual FlowsheetNode* Inner() { return nullptr; }

    ObjectStatus Condition() const { return stale_ ? ObjectStatus::not_solved : status_; }
    // The status that goes with the calculated values, stale or not.
    ObjectStatus ResultCondition() const { return status_; }
    const std::string& StatusText() const { return status_text_; }
    void SetCondition(ObjectStatus status, std::string text) {
        status_ = status;
        status_text_ = std::move(text);
    }
    // The calculated values of a stale node are older than a change of the case. Until a solve
    // fills them again its status is not solved, and they are shown missing; those of a recording
    // are shown all the same, as outdated.
    bool IsStale() const { return stale_; }
    void SetStale(bool stale) { stale_ = stale; }
    bool IsDeleted() const { return deleted_; }
    // Of this node and all inside it: they are no objects of the case any more.
    void SetDeleted();
    std::uint64_t IdentityNumber() const { return identity_.Number(); }
    // Of this node and all inside it: it lives no more, though it is what it was.
    void EndIdentity();

    const Shape* GetShape() const { return shape_; }
    // Takes shape and values of `variables`; attached objects are resolved later by the case.
    void SetVariables(const Shape* shape, const std::vector<VariableData>& variables);
    std::vector<VariableData> VariablesToData();
    Cell& CellAt(int index) { return cells_[static_cast<std::size_t>(index)]; }
    std::span<Cell> CellsOf(const Row& row) {
        return {cells_.get() + row.first_cell, static_cast<std::size_t>(row.cell_count)};
    }
    const std::string& TextAt(const Cell& cell) const;
    void SetTextAt(Cell& cell, std::string text);
    // The object on a port; null when there is none.
    Node* PortTarget(const Row& row) const { return Target(cells_[row.first_cell]); }
    // Attached object of a cell; null when it has been deleted.
    Node* Target(const Cell& cell) const {
        return cell.target && !cell.target->deleted_ ? cell.target : nullptr;
    }

    // The operations of host::Viewable that concern values.
    double ReadReal(const host::VarDescription& variable) {
        const int cell = shape_ ? shape_->ScalarCell(variable.HostWord()) : -1;
        if (cell < 0) return ReadOtherReal(variable);
        return IsHidden(CellAt(cell)) ? host::kEmptyReal : CellAt(cell).number;
    }
    void StoreReal(const host::VarDescription& variable, double value);
    host::Text ReadText(const host::VarDescription& variable);
    void StoreText(const host::VarDescription& variable, const host::Text& value);
    host::Viewable* ReadAttachment(const host::VarDescription& variable);
    const host::LinkedList* ListVariables() const;
    host::VariableNameInfo* FindRow(const host::VarDescription& variable) {
        return shape_ ? Locate(variable).row : nullptr;
    }
    void Dimensions(const host::VarDescription& variable, host::DimInfo& out);
    host::VariableType UnitTypeOf(const host::VarDescription& variable);
    // Null for a variable of this node's own shape, which no other holds: what most reads ask of.
    host::Viewable* ResolveOwner(const host::VarDescription& variable) {
        if (shape_ && shape_->ByWord(variable.HostWord())) return nullptr;
        return ResolveElsewhere(variable);
    }
    host::Viewable* ResolveElsewhere(const host::VarDescription& variable);
    host::Viewable* OwnerOfType(const host::ObjectTypeInfo* type);
    bool LiesIn(host::Viewable* flowsheet);
    virtual host::CSpecSource* SpecSource() { return nullptr; }
    // Leaves `state` alone for a variable that is not this object's.
    void Status(const host::VarDescription& variable, host::ModifyState& state);
    // Shown though it is older than a change of the case.
    bool IsOutdated(const host::VarDescription& variable);
    bool HasOldResults() const;

 protected:
    struct Place {
        Row* row = nullptr;
        int cell = -1;
    };

    // Follows one step of a moniker path such as "StreamObject.400(Feed)"; null when there is none.
    // `rest` is what has still to be followed and is moved on.
    virtual Node* Follow(std::string_view&) { return nullptr; }
    // Called for composition stores into a stream; other nodes store the bare fraction.
    virtual void CompositionChanged(Row&) {}
    virtual bool StoresCompositions() const { return false; }

    CaseContext& Context() const { return *context_; }

 private:
    // Array elements, descriptions from monikers and parts of other objects.
    double ReadOtherReal(const host::VarDescription& variable);
    Place Locate(const host::VarDescription& variable);
    Place LocateByMoniker(const host::VarDescription& variable);
    Place LocateForStore(const host::VarDescription& variable);
    // The object that the parts before the variable's lead to; null for a variable of one part.
    Node* Holder(const host::VarDescription& variable) {
        return variable.NextPart() ? Of(ResolveOwner(variable)) : nullptr;
    }
    bool IsStaleCell(const Cell& cell) const {
        return stale_ && cell.state == static_cast<std::uint8_t>(VariableState::calculated);
    }
    bool IsHidden(const Cell& cell) const { return IsStaleCell(cell) && !context_->keeps_results; }
    bool MayStoreReal(const Place& place, double value);
    host::Text LabelAt(const Row& row, const host::VarDescription& variable) const;
    void FillCell(const Row& row, const ValueData& from, Cell& cell);
    Node* FollowPath(std::string_view path);

    CaseContext* context_;
    Node* owner_;
    const ObjectType* type_;
    host::Text name_;
    const Shape* shape_ = nullptr;
    std::unique_ptr<Cell[]> cells_;
    std::vector<std::string> texts_;
    std::string status_text_;
    ObjectStatus status_ = ObjectStatus::ok;
    bool stale_ = false;
    bool deleted_ = false;
    casehost::Identity identity_;
};

// A node behind one of the host's classes.
template <class Face>
class NodeOf : public Face, public Node {
 public:
    using Node::Node;

    host::Viewable* View() override { return this; }

    const host::Text& GetName() override { return Name(); }
    double GetRealValue(const host::VarDescription& v) override { return ReadReal(v); }
    void SetRealValue(const host::VarDescription& v, double x) override { StoreReal(v, x); }
    host::Text GetTextValue(const host::VarDescription& v) override { return ReadText(v); }
    void SetTextValue(const host::VarDescription& v, host::Text x) override { StoreText(v, x); }
    const host::LinkedList* VariableNames() override { return ListVariables(); }
    host::VariableNameInfo* FindVariableName(const host::VarDescription& v) override {
        return FindRow(v);
    }
    host::VarEnumInfo* GetVariableEnum(host::VariableNameInfo* row) override {
        return row ? row->GetEnumInfo(this) : nullptr;
    }
    host::Viewable* ResolveVariableOwner(const host::VarDescription& v) override {
        return ResolveOwner(v);
    }
    void GetVariableDimensions(const host::VarDescription& v, host::DimInfo& out) override {
        Dimensions(v, out);
    }
    host::Viewable* GetOwner(const host::ObjectTypeInfo* type) override {
        return OwnerOfType(type);
    }
    bool IsSameFlowSheet(host::Viewable* flowsheet) override { return LiesIn(flowsheet); }
    host::VariableType GetVariableUnitType(const host::VarDescription& v) override {
        return UnitTypeOf(v);
    }
    host::CSpecSource* GetSpecSource() override { return SpecSource(); }
    host::FlowSheet* SubFlowSheet() override { return nullptr; }
    const host::ObjectTypeInfo* Type() const override { return Class(); }
    host::Viewable::Status GetMyStatusCondition() override {
        return static_cast<host::Viewable::Status>(Condition());
    }
    host::Viewable* GetVariableAttachment(const host::VarDescription& v) override {
        return ReadAttachment(v);
    }
    std::uint64_t Identity() const override { return IdentityNumber(); }
};

}  // namespace fixtop::casehost
