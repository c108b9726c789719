// SPDX-License-Identifier: Apache-2.0
#pragma once

// FixedContext, FixedEntry: what the levels of fixed names share. A level gives a cursor, a
// FixedCursor over its names, and derives its context and its entry from these two.

#include <initializer_list>
#include <vector>

#include "fixtop/ref.h"
#include "framework/nodes/attr_map.h"
#include "framework/nodes/counted.h"
#include "framework/nodes/empties.h"
#include "framework/nodes/shield.h"
#include "host/case_life.h"
#include "host/host_access.h"
#include "host/host_attributes.h"
#include "host/node_above.h"

namespace fixtop {

template <class Derived, class Cursor, class Entry>
class FixedContext : public CountedFromZero<FIContext>, public LivingNode {
 public:
    FICursorBase* MakeCursor(int kind) override {
        if (kind == kKeyCursor || IsGone()) return EmptyCursor();
        return HandOut(new Shielded<Cursor>(static_cast<Derived*>(this)));
    }
    FIEntry* MakeEntry(int index) {
        return new Shielded<Entry>(static_cast<Derived*>(this), index);
    }

    host::SimulationCase* Case() const { return life_->Case(); }
    const Ref<CaseLife>& CaseRecord() const { return life_; }
    const HovexOptions* Options() const { return above_.Options(); }
    bool FollowsAttachments() const { return above_.FollowsAttachments(); }
    Liveness* Life() const override { return life_.Get(); }
    bool IsGone() const override { return !life_->IsLive(); }

 protected:
    // A null case is that of the options, or else the active one.
    FixedContext(host::SimulationCase* simulation_case, NodeAbove above)
        : life_(LifeFor(simulation_case, above.Options())), above_(std::move(above)) {}

    const Ref<CaseLife> life_;
    NodeAbove above_;
};

// Derived gives a constexpr kRefusal: what a write of anything but the switches answers.
template <class Derived, class Cursor, class Context>
class FixedEntry : public AttrMapEntry<Derived>, public LivingNode {
 public:
    void GetName(FIValue& out) override {
        if (IsGone()) return out.Clear();
        out.SetText(Cursor::kNames.names[index_]);
    }
    bool IsContainer() override { return !IsGone(); }
    Liveness* Life() const override { return context_->Life(); }
    bool IsGone() const override { return context_->IsGone(); }
    bool StandsWith(const LivingNode& other) const override {
        const auto* that = dynamic_cast<const FixedEntry*>(&other);
        return that && index_ == that->index_ && Life() == that->Life() &&
               context_->IsSameList(*that->context_);
    }
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override {
        WriteAttribute(static_cast<Derived&>(*this), name, value, mode, Derived::kRefusal, out);
    }
    bool FollowsAttachments() const { return attachments_; }
    void FollowAttachments(bool follow) { attachments_ = follow; }

 protected:
    FixedEntry(Context* context, int index)
        : context_(Ref<Context>::Share(context)),
          index_(index),
          attachments_(context->FollowsAttachments()) {}

    // The rows of all fixed nodes, and the given ones. The switches are taken, but not shown.
    static std::vector<AttrRow<Derived>> FixedRows(std::initializer_list<AttrRow<Derived>> given) {
        std::vector<AttrRow<Derived>> rows = HostAttributeRows<Derived>({
            {"id", ReadNameRow<Derived>},
            {"browser_name", ReadNameRow<Derived>},
            {"display_name", ReadNameRow<Derived>},
            {"isleaf", ReadNumberRow<Derived, 0>},
            {"is_container", ReadNumberRow<Derived, 0>},
            AttachmentsRow<Derived>(NeverShown<Derived>),
            SkipCorrelationsRow<Derived>(NeverShown<Derived>),
            SkipAttachmentsRow<Derived>(NeverShown<Derived>),
        });
        PlaceRows(rows, given);
        return rows;
    }
    static void ReadMainStatus(Derived& self, FIValue& out) {
        out.SetText(StatusText(FlowSheetStatus(FlowSheetOrMain(nullptr, self.context_->Case()))));
    }

    Ref<Context> context_;
    int index_;
    bool attachments_;
};

}  // namespace fixtop
