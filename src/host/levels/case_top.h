// SPDX-License-Identifier: Apache-2.0
#pragma once

// FIXTopEntry: the top of a case. It adds to a plain top the state of the case's solver and two
// switches that can be written: whether the case is shown, and whether attachments are followed.
//
// Subscribers stand in one list of the module, which the destruction of any FIXTopEntry empties:
// the design is one such entry per module. References that stood in it hear of their case by its
// record, which lasts as long as they do.

#include "framework/nodes/top_entry.h"
#include "host/case_life.h"

namespace fixtop {

class FIXTopEntry : public FITopEntry {
 public:
    // Shares `context` and owns `solver`, which may be null. A null case is the active one. With a
    // notify slot the entry accepts subscribers and writes the address of Dispatch through it.
    FIXTopEntry(FIContext* context, host::SimulationCase* simulation_case, FINotify* notify_slot,
                FISolver* solver);
    ~FIXTopEntry() override;

    static std::span<const AttrRow<FIXTopEntry>> AttributeRows();

    void GetAttribute(const FIValue& name, FIValue& out) override;
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    FIAttributeCursorBase* MakeCursor() override;
    bool Subscribe(void* owner, int kind, FICallback callback) override;
    bool Unsubscribe(void* owner, int kind) override;

    // Tells the subscribers: 0 is a change, anything else a deletion, of which those of other cases
    // than the one that tells hear nothing.
    static void Dispatch(int event);

    Liveness* Life() const final { return life_.Get(); }
    bool IsGone() const final { return !life_->IsLive(); }

 private:
    void ReadStatus(FIValue& out) const;
    void SetVisible(const FIValue& value, FIValue& out);
    void SetAttachments(const FIValue& value, FIValue& out);

    void OnEnd() override;

    const Ref<CaseLife> life_;
    bool has_subscriptions_;
    bool attachments_ = true;
};

}  // namespace fixtop
