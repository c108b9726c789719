// SPDX-License-Identifier: Apache-2.0
#include "framework/nodes/top_entry.h"

#include "framework/nodes/empties.h"
#include "framework/nodes/shield.h"
#include "framework/nodes/subscribers.h"
#include "framework/nodes/top_cursor.h"
#include "platform/computer_name.h"

namespace fixtop {

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
    : context_(Ref<FIContext>::Share(context)),
      living_(dynamic_cast<const LivingNode*>(context)),
      life_(Ref<Liveness>::Share(living_ ? living_->Life() : nullptr)),
      notifier_(notify_slot),
      service_(service) {
    if (notify_slot) *notify_slot = &FITopEntry::NotifyAll;
}

FITopEntry::~FITopEntry() {
    if (life_) life_->Leave(*this);
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
    if (IsGone()) return out.Clear();
    out.SetText("Top");
}

void FITopEntry::SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) {
    if (IsGone()) return out.SetText(kNodeDeletedText);
    FIEntry::SetAttribute(name, value, mode, out);
}

FIContext* FITopEntry::GetContext() {
    return IsGone() ? EmptyContext() : context_.Counted();
}

bool FITopEntry::Subscribe(void* owner, int kind, FICallback callback) {
    if (!notifier_ || IsGone()) return false;
    Subscribers().Add(owner, kind, callback, life_.Get());
    if (life_) life_->WatchQuietly(*this);
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
    memory::Contain([event] { Subscribers().Dispatch(event, Liveness::OfEvent()); });
}

void FITopEntry::OnEnd() {
    Subscribers().TellEnd(life_.Get());
}

bool FITopEntry::StandsWith(const LivingNode& other) const {
    const auto* that = dynamic_cast<const FITopEntry*>(&other);
    return that && Life() == that->Life();
}

FIContext* FITopEntry::MakeSingleChildContext() {
    return Ref<FIContext>::Share(new Shielded<TopContext>(context_.Get())).Detach();
}

}  // namespace fixtop
