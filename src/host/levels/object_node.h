// SPDX-License-Identifier: Apache-2.0
#pragma once

// HTopEntry: the node of one host object: a stream, a unit operation, a utility, a process data
// table or a reaction. Below it lie the inner flowsheet of a template operation, or else the
// object's variables, or, when the options say so, its specification elements.
//
// It has no options of its own: what shows below it shows as above it. Many are held, so what it
// has in common with its siblings stays in their context.
//
// A stream can be held: while it is, stores to its composition neither normalise nor start the
// solver; giving the hold back does both once.

#include "fixtop/ref.h"
#include "framework/nodes/attr_map.h"
#include "host/host_object.h"
#include "host/hovex_options.h"
#include "host/lists/list_position.h"
#include "host/specifications/spec_view.h"

namespace fixtop {

class HFSOContext;

struct ObjectSwitches {
    bool attachments = false;
};

class HTopEntry : public AttrMapEntry<HTopEntry, ObjectSwitches>, public LivingNode {
 public:
    // The spot is where it stood when the cursor on it made the node.
    HTopEntry(HFSOContext* context, host::Viewable* object, ListSpot spot = {});

    static std::span<const AttrRow<HTopEntry>> AttributeRows();

    void GetName(FIValue& out) override;
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    bool IsContainer() override { return !IsGone(); }
    FIContext* GetContext() override;
    bool CanHold() override;
    void BeginBatch() override;

    // Null when it is gone.
    host::Viewable* Object() const {
        return IsGone() ? nullptr : static_cast<host::Viewable*>(object_.Address());
    }
    Liveness* Life() const final { return CaseRecord().Get(); }
    bool IsGone() const final { return !object_.Check(*CaseRecord()); }
    std::uint64_t ObjectNumber() const final { return object_.Number(); }
    bool IsTracked() const final { return object_.IsTracked(); }
    bool Remakes(FICursorBase& cursor) const override;
    Ref<FICursorBase> RemakeCursor() const override;
    bool FollowsAttachments() const { return beside_.attachments; }
    void FollowAttachments(bool follow) { beside_.attachments = follow; }

 private:
    // What lies below: decided anew at each question, as the host may have changed.
    enum class Below { kNothing, kFlowSheet, kSpecification, kVariables };
    Below FindBelow();

    const Ref<CaseLife>& CaseRecord() const;
    HostObject<host::Viewable> Handle() const { return {object_, CaseRecord()}; }
    const HovexOptions& Options() const;

    Ref<HFSOContext> context_;
    HostPlace object_;
    const ListSpot spot_;
    HSpecView specification_;
    const host::LinkedList* variables_ = nullptr;
};

}  // namespace fixtop
