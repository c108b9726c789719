// SPDX-License-Identifier: Apache-2.0
#pragma once

// HVarDimsEntry: an index of one dimension of an array. On the last level it is an element, which
// reads and stores like a scalar variable; before it, the array that is left.
//
// A store to an element of a stream is held: the stream normalises and the solver starts once, when
// the hold is given back. Fractions of a composition are held by the stream's own node.

#include "fixtop/ref.h"
#include "framework/nodes/attr_map.h"
#include "host/variables/attachment.h"
#include "host/variables/dimension_context.h"

namespace fixtop {

class HVarDimsEntry : public AttrMapEntry<HVarDimsEntry>, public HAttachment, public LivingNode {
 public:
    HVarDimsEntry(HVarDimsContext* context, int index);

    static std::span<const AttrRow<HVarDimsEntry>> AttributeRows();

    void GetName(FIValue& out) override {
        if (IsGone()) return out.Clear();
        if (!context_->Names().AreCounted()) return out.Assign(name_);
        HElementNames::SetCounted(index_, out);
    }
    void GetAttribute(const FIValue& name, FIValue& out) override;
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    bool IsContainer() override;
    FIContext* GetContext() override;
    // By name; of the same name, entries of one array by index.
    int Compare(FIEntry& other) override;
    bool CanHold() override;
    void BeginBatch() override;
    host::Viewable* Holder() const override { return Array().HolderAt(address_); }
    Liveness* Life() const final { return Array().Life(); }
    bool IsGone() const final { return Array().IsGone(); }
    Mark MarkOf() const override { return {index_, 0, {}}; }
    bool StandsWith(const LivingNode& other) const override;

    int Index() const { return index_; }
    bool FollowsAttachments() const { return attachments_; }
    void FollowAttachments(bool follow) { attachments_ = follow; }
    int DimensionsBelow() const { return Array().Dimensions() - context_->Dimension() - 1; }
    const host::VariableNameInfo& Row() const { return Array().Row(); }
    bool IsCustom() const { return Array().IsCustom(); }
    host::Viewable* EffectiveOwner() const { return Array().EffectiveOwner(); }
    host::VarType UnitType() const { return Array().UnitType(); }
    HVariable Variable() const { return Array().At(address_); }
    void ReadValue(FIValue& out) { Array().ReadValueAt(address_, GetVarSet(), out); }
    const char* Store(const FIValue& value) {
        return Array().StoreAt(address_, GetVarSet(), value);
    }

 private:
    HVarsEntry& Array() const { return context_->Variable(); }
    // The variables of the object that this element leads to; null when it is not followed.
    const host::LinkedList* FollowedVariables();
    // The stream that finally holds the element; none for another object.
    HostObject<host::Viewable> Stream() const;
    void ReadMoniker(FIValue& out) const;

    Ref<HVarDimsContext> context_;
    int index_;
    host::VarDescription address_;
    FIValue name_;  // where it is not its number
    HAttachedList attached_;
    bool attachments_;
};

}  // namespace fixtop
