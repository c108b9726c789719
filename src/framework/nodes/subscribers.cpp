// SPDX-License-Identifier: Apache-2.0
#include "framework/nodes/subscribers.h"

#include <algorithm>
#include <utility>

#include "diagnostics/memory_guard.h"

namespace fixtop {

void SubscriberList::Add(void* owner, int kind, FICallback callback, const Liveness* scope) {
    records_.push_back({kind, owner, callback, scope, true});
}

bool SubscriberList::Remove(void* owner, int kind) {
    const auto found = std::find_if(records_.begin(), records_.end(), [&](const Record& record) {
        return record.active && record.kind == kind && record.owner == owner;
    });
    if (found == records_.end()) return false;
    if (rounds_ > 0) {
        found->active = false;
        erase_pending_ = true;
    } else {
        records_.erase(found);
    }
    return true;
}

template <class Wanted>
void SubscriberList::Tell(bool deletion, Wanted wanted) {
    ++rounds_;
    const std::uint64_t outer = std::exchange(present_round_, ++rounds_begun_);
    // By index, since a callback may subscribe, which moves the records; who comes during the round
    // waits for the next, or one that leaves and comes back would be called without end.
    const std::size_t count = records_.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (!records_[i].active || !wanted(records_[i])) continue;
        if (deletion) records_[i].told = true;
        const Record record = records_[i];
        memory::Outside([&] { record.callback(record.owner, record.kind); });
    }
    present_round_ = outer;
    if (--rounds_ == 0 && erase_pending_) EraseInactive();
}

void SubscriberList::Dispatch(int event, const Liveness* scope) {
    const bool deletion = event != 0;
    Tell(deletion, [=](const Record& record) { return record.Wants(deletion, scope); });
}

void SubscriberList::TellEnd(const Liveness* scope) {
    Tell(true, [=](const Record& record) {
        return record.kind == kNodeDeleted && record.scope == scope && !record.told;
    });
}

void SubscriberList::Clear() {
    for (Record& record : records_) record.active = false;
    erase_pending_ = true;
    if (rounds_ == 0) EraseInactive();
}

void SubscriberList::EraseInactive() {
    erase_pending_ = false;
    std::erase_if(records_, [](const Record& record) { return !record.active; });
}

}  // namespace fixtop
