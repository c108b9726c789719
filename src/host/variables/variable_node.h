// SPDX-License-Identifier: Apache-2.0
#pragma once

// HVarsEntry: the node of one variable of a host object. Scalars read and store values; arrays and
// followed attachments have children.

#include <cstdint>
#include <memory>
#include <vector>

#include "fixtop/ref.h"
#include "framework/nodes/attr_map.h"
#include "host/variables/variable_context.h"
#include "host/variables/variable_values.h"

namespace fixtop {

class HVarsEntry : public LivingNode, public HAttachment, public AttrMapEntry<HVarsEntry> {
 public:
    HVarsEntry(HVarsContext* context, const host::VariableNameInfo* row);

    static std::span<const AttrRow<HVarsEntry>> AttributeRows();

    // The name of the row with `"`, `&`, `<` and `>` as entities, within 255 bytes.
    void GetName(FIValue& out) override;
    void GetAttribute(const FIValue& name, FIValue& out) override;
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    bool IsContainer() override;
    FIContext* GetContext() override;
    bool CanHold() override { return !IsGone() && !IsCompositionVariable(); }
    Liveness* Life() const final { return context_->Life(); }
    bool IsGone() const final { return context_->IsGone(); }
    bool StandsWith(const LivingNode& other) const override;
    void TellReads(ReadAhead& ahead) const override {
        ahead.family = context_.Get();
        ahead.object = context_->Owner().Address();
    }
    host::Viewable* Holder() const override { return HolderAt(Description()); }

    bool FollowsAttachments() const { return attachments_; }
    void FollowAttachments(bool follow) { attachments_ = follow; }
    // Count of dimensions; 0 is a scalar. Counted when it is first wanted.
    int Dimensions() const { return dimensions_ >= 0 ? dimensions_ : CountDimensions(); }
    int DimensionsBelow() const { return Dimensions(); }
    const host::VariableNameInfo& Row() const { return *row_; }
    bool IsCustom() const { return custom_block_; }
    // The object that lists the variable, and the one on which every read and store is done.
    // Null when they are gone.
    host::Viewable* Owner() const { return context_->Owner().Get(); }
    host::Viewable* EffectiveOwner() const {
        return context_->IsOfCorrelation() ? OwnerThroughCorrelation() : Owner();
    }
    // The same as a handle.
    HostObject<host::Viewable> EffectiveObject() const {
        if (!context_->IsOfCorrelation()) return context_->Owner();
        return {OwnerThroughCorrelation(), CaseRecord()};
    }
    // Tells apart the owners, whether they live or not.
    std::uint64_t OwnerNumber() const { return context_->Owner().Number(); }
    const Ref<CaseLife>& CaseRecord() const { return context_->Owner().Life(); }
    // What names the elements of a dimension; empty where the row has nothing for it.
    const host::VarDescription& OffsetDescription(int dimension) const;
    host::VarType UnitType() const {
        const host::VarType type = unit_type_ >= 0 ? host::VarType{unit_type_} : AskUnitType();
        const bool varies = type == host::kVariableUnitType;
        return varies ? EffectiveUnitType(type, Owner(), Description()) : type;
    }
    bool IsCompositionVariable() const;
    HVariable Variable() const { return At(Description()); }
    void ReadValue(FIValue& out);
    // What a store runs may take the row away, so that its address is copied.
    const char* Store(const FIValue& value) {
        return StoreAt(host::VarDescription(Description()), GetVarSet(), value);
    }

    // ---- One scalar of the variable: itself, or the element at an address ----

    HVariable At(const host::VarDescription& address) const {
        if (context_->IsOfCorrelation()) return {row_, OwnerThroughCorrelation(), &address};
        host::Viewable* owner = Owner();
        return {row_, owner, &address, owner};
    }
    host::Viewable* HolderAt(const host::VarDescription& address) const;
    // Whether the scalar is an attachment to follow, given the switch.
    bool FollowsAt(const host::VarDescription& address, bool attachments) const;
    // The value in the unit that `vars` asks for.
    void ReadValueAt(const host::VarDescription& address, FIVarSet* vars, FIValue& out);
    // Stores a value given in that unit; answers null or the message.
    const char* StoreAt(const host::VarDescription& address, FIVarSet* vars, const FIValue& value);

 private:
    // What arrays and attachments need; most variables are neither.
    struct Branch {
        std::vector<host::VarDescription> offsets;  // of the dimensions, up to three
        HAttachedList attached;
    };

    const host::VarDescription& Description() const { return row_->description; }
    // What does not fit where it is kept is asked for each time.
    int CountDimensions() const;
    host::VarType AskUnitType() const;
    // The variables of a correlation describe the object that it is attached to.
    host::Viewable* OwnerThroughCorrelation() const;
    // Null when nothing is attached or it has no variables. Kept while no structure has changed.
    const host::LinkedList* AttachedVariables();
    bool LeadsSomewhere();
    void ReadMoniker(FIValue& out);

    // In the room that the bases leave. Below 0: not known yet.
    mutable std::int16_t unit_type_ = -1;
    mutable std::int8_t dimensions_ = -1;
    bool attachments_ : 1;
    bool custom_block_ : 1;
    bool follow_attachment_ : 1 = false;
    Ref<HVarsContext> context_;
    const host::VariableNameInfo* row_;
    std::unique_ptr<Branch> branch_;
};

}  // namespace fixtop
