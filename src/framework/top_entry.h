#pragma once

// FITopEntry: the root of a tree. It answers the attributes "id", "type" and "server", and hands
// out the context below which the model lies.

#include <memory>
#include <span>

#include "framework/attr_map.h"
#include "framework/entry.h"
#include "framework/ref.h"
#include "framework/solver.h"

// What the host calls when the simulation changed: 0 is a change, anything else a deletion.
using FINotify = void (*)(int event);

class FITopEntry : public AttrMapEntry<FITopEntry> {
 public:
    // Shares `context`, which may not be null. With a notify slot the entry accepts subscribers and
    // writes the address of NotifyAll through it. Owns `service` (a solver), which may be null.
    FITopEntry(FIContext* context, FINotify* notify_slot, FISolver* service);

    static std::span<const AttrRow<FITopEntry>> AttributeRows();

    void GetName(FIValue& out) override;
    FIContext* GetContext() override;
    bool Subscribe(void* owner, int kind, FICallback callback) override;
    bool Unsubscribe(void* owner, int kind) override;
    // Kinds 1 and 2 lend the service.
    bool QueryService(int kind, void** out) override;

    // Tells the subscribers, which all tops of the process share.
    static void NotifyAll(int event);

    // The context that lists one child, "Top", with the inner context below it.
    FIContext* MakeSingleChildContext();

 private:
    Ref<FIContext> context_;
    bool notifier_;
    std::unique_ptr<FISolver> service_;
};
