#pragma once

// HVarsEntry: the node of one variable of a host object. Scalars read and store values; arrays and
// followed attachments have children.

#include <array>

#include "framework/attr_map.h"
#include "framework/ref.h"
#include "host/h_vars_context.h"
#include "host/h_vars_values.h"

class HVarsEntry final : public AttrMapEntry<HVarsEntry> {
 public:
    HVarsEntry(HVarsContext* context, const host::VariableNameInfo* row);

    static std::span<const AttrRow<HVarsEntry>> AttributeRows();

    // The name of the row with `"`, `&`, `<` and `>` as entities, within 255 bytes.
    void GetName(FIValue& out) override;
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    bool IsContainer() override;
    FIContext* GetContext() override;
    bool CanHold() override { return !IsCompositionVariable(); }

    bool FollowsAttachments() const { return attachments_; }

    // ---- For the levels of an array below ----

    // Count of dimensions; 0 is a scalar.
    int Dimensions() const;
    const host::VariableNameInfo& Row() const { return *row_; }
    // The object on which every read and store is done.
    host::Viewable* EffectiveOwner() const;
    const host::VarDescription& Description() const { return description_; }
    const host::VarDescription& OffsetDescription(int dimension) const {
        return offsets_[dimension];
    }
    host::VarType UnitType() const;
    const HovexOptions& Options() const { return options_; }
    bool IsCompositionVariable() const;
    // The object that this variable points at, null when there is none.
    host::Viewable* Holder() const;

 private:
    // Null when nothing is attached or it has no variables.
    const host::LinkedList* AttachedVariables();
    bool LeadsSomewhere();
    bool DecideFollowing() const;
    bool HasUnits() const;
    // No value is shown of arrays and of the custom row.
    bool ShowsValue() const { return Dimensions() == 0 && !custom_block_; }
    HVariable Variable() const {
        return {row_, EffectiveOwner(), &description_, through_correlation_ ? nullptr : owner_};
    }

    void ReadValue(FIValue& out);
    void ReadLimit(double limit, FIValue& out);
    void ReadMoniker(FIValue& out);
    void ReadFullAttachMoniker(FIValue& out) const;
    const char* Store(const FIValue& value);

    Ref<HVarsContext> context_;
    const host::VariableNameInfo* row_;
    host::Viewable* owner_;
    host::VarDescription description_;
    mutable int dimensions_ = -1;
    std::array<host::VarDescription, 3> offsets_;
    host::VarType unit_type_;
    HUnitMemory default_unit_;
    bool attachments_;
    bool through_correlation_;
    bool custom_block_;
    const host::LinkedList* attached_variables_ = nullptr;
    HovexOptions options_;
    bool follow_attachment_;
};
