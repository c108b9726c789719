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

// What an HVarsEntry keeps of its row. Below 0: not known yet.
struct VariableFacts {
    mutable std::int16_t unit_type = -1;
    mutable std::int8_t dimensions = -1;
    bool attachments : 1 = false;
    bool custom_block : 1 = false;
    bool follow_attachment : 1 = false;
};

class HVarsEntry : public AttrMapEntry<HVarsEntry, VariableFacts>,
                   public HAttachment,
                   public LivingNode {
 public:
    // The spot is where the row stood when the cursor on it made the node.
    HVarsEntry(HVarsContext* context, const host::VariableNameInfo* row, ListSpot spot = {});

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
    bool Remakes(FICursorBase& cursor) const override {
        return context_->Remakes(cursor, *row_, spot_);
    }
    Ref<FICursorBase> RemakeCursor() const override { return context_->RemakeCursor(*row_, spot_); }
    void TellReads(ReadAhead& ahead) const override {
        ahead.family = context_.Get();
        ahead.object = context_->Owner().Address();
    }
    host::Viewable* Holder() const override { return HolderAt(Description()); }

    bool FollowsAttachments() const { return beside_.attachments; }
    void FollowAttachments(bool follow) { beside_.attachments = follow; }
    // Count of dimensions; 0 is a scalar. Counted when it is first wanted.
    int Dimensions() const {
        return beside_.dimensions >= 0 ? beside_.dimensions : CountDimensions();
    }
    int DimensionsBelow() const { return Dimensions(); }
    const host::VariableNameInfo& Row() const { return *row_; }
    bool IsCustom() const { return beside_.custom_block; }
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
        const host::VarType type =
            beside_.unit_type >= 0 ? host::VarType{beside_.unit_type} : AskUnitType();
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

    Ref<HVarsContext> context_;
    const host::VariableNameInfo* row_;
    const ListSpot spot_;
    std::unique_ptr<Branch> branch_;
};

}  // namespace fixtop
