// SPDX-License-Identifier: Apache-2.0
#pragma once

// FITopEntry: the root of a tree. It answers the attributes "id", "type" and "server", and hands
// out the context below which the model lies. It lives as long as what the context stands on.

#include <memory>
#include <span>

#include "fixtop/entry.h"
#include "fixtop/ref.h"
#include "fixtop/solver.h"
#include "framework/nodes/attr_map.h"

namespace fixtop {

// What the host calls when the simulation changed: 0 is a change, anything else a deletion.
using FINotify = void (*)(int event);

class FITopEntry : public AttrMapEntry<FITopEntry>, public LivingNode, protected Liveness::Watcher {
 public:
    // Shares `context`, which may not be null. With a notify slot the entry accepts subscribers and
    // writes the address of NotifyAll through it. Owns `service` (a solver), which may be null.
    FITopEntry(FIContext* context, FINotify* notify_slot, FISolver* service);
    ~FITopEntry() override;

    static std::span<const AttrRow<FITopEntry>> AttributeRows();

    void GetName(FIValue& out) override;
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    bool IsContainer() override { return !IsGone(); }
    FIContext* GetContext() override;
    bool Subscribe(void* owner, int kind, FICallback callback) override;
    bool Unsubscribe(void* owner, int kind) override;
    // Kinds 1 and 2 lend the service.
    bool QueryService(int kind, void** out) override;

    // Tells the subscribers, which all tops of the process share; of a deletion those of other
    // cases than the one that tells hear nothing.
    static void NotifyAll(int event);

    Liveness* Life() const override { return life_.Get(); }
    bool IsGone() const override { return living_ && living_->IsGone(); }
    bool StandsWith(const LivingNode& other) const override;

    // The context that lists one child, "Top", with the inner context below it.
    FIContext* MakeSingleChildContext();

 protected:
    // Liveness::Watcher
    void OnEnd() override;
    void OnChange() override {}
    void OnForgotten() override {}

 private:
    Ref<FIContext> context_;
    // The context; null for one that stands on nothing that may go.
    const LivingNode* const living_;
    const Ref<Liveness> life_;
    bool notifier_;
    std::unique_ptr<FISolver> service_;
};

}  // namespace fixtop
