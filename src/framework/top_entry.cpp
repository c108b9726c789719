#include "framework/top_entry.h"

#include "framework/shield.h"
#include "framework/subscribers.h"
#include "framework/top_cursor.h"
#include "platform/computer_name.h"

namespace {

SubscriberList& Subscribers() {
    static SubscriberList* const list = new SubscriberList;
    return *list;
}

void ReadServer(FITopEntry&, FIValue& out) {
    out.SetText(ComputerName());
}

}  // namespace

FITopEntry::FITopEntry(FIContext* context, FINotify* notify_slot, FISolver* service)
    : context_(Ref<FIContext>::Share(context)), notifier_(notify_slot), service_(service) {
    if (notify_slot) *notify_slot = &FITopEntry::NotifyAll;
}

std::span<const AttrRow<FITopEntry>> FITopEntry::AttributeRows() {
    static constexpr AttrRow<FITopEntry> rows[] = {
        {"id", [](FITopEntry&, FIValue& out) { out.SetText("Top"); }},
        {"type", [](FITopEntry&, FIValue& out) { out.SetText("TopNode"); }},
        {"server", &ReadServer},
    };
    return rows;
}

void FITopEntry::GetName(FIValue& out) {
    out.SetText("Top");
}

FIContext* FITopEntry::GetContext() {
    return context_.Counted();
}

bool FITopEntry::Subscribe(void* owner, int kind, FICallback callback) {
    if (!notifier_) return false;
    Subscribers().Add(owner, kind, callback);
    return true;
}

bool FITopEntry::Unsubscribe(void* owner, int kind) {
    return notifier_ && Subscribers().Remove(owner, kind);
}

bool FITopEntry::QueryService(int kind, void** out) {
    const bool known = kind == 1 || kind == 2;
    *out = known ? service_.get() : nullptr;
    return *out != nullptr;
}

void FITopEntry::NotifyAll(int event) {
    memory::Contain([event] { Subscribers().Dispatch(event); });
}

FIContext* FITopEntry::MakeSingleChildContext() {
    return Ref<FIContext>::Share(new Shielded<TopContext>(context_.Get())).Detach();
}
