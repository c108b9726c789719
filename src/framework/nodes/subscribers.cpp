// SPDX-License-Identifier: Apache-2.0
#include "framework/nodes/subscribers.h"

#include <algorithm>

#include "diagnostics/memory_guard.h"
#include "framework/nodes/change_round.h"

namespace fixtop {

void SubscriberList::Add(void* owner, int kind, FICallback callback, const Liveness* scope) {
    records_.push_back({owner, callback, scope, added_++, kind});
    try {
        index_.insert(std::prev(records_.end()));
    } catch (...) {
        records_.pop_back();
        throw;
    }
}

bool SubscriberList::Remove(void* owner, int kind) {
    const auto [begin, end] = index_.equal_range(Key{owner, kind});
    if (begin == end) return false;
    const auto first = std::min_element(
        begin, end, [](const Place& a, const Place& b) { return a->number < b->number; });
    const Place found = *first;
    index_.erase(first);
    if (rounds_ > 0) {
        found->active = false;
        erase_pending_ = true;
    } else {
        records_.erase(found);
    }
    return true;
}

// Who comes during the round waits for the next, or one that leaves and comes back would be called
// without end.
template <class Wanted>
void SubscriberList::Tell(bool deletion, Wanted wanted) {
    if (records_.empty()) return;
    ++rounds_;
    const ChangeRound round;
    const Place last = std::prev(records_.end());
    for (Place each = records_.begin();; ++each) {
        if (each->active && wanted(*each)) {
            if (deletion) each->told = true;
            const Record record = *each;
            memory::Outside([&] { record.callback(record.owner, record.kind); });
        }
        if (each == last) break;
    }
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
    index_.clear();
    for (Record& record : records_) record.active = false;
    erase_pending_ = true;
    if (rounds_ == 0) EraseInactive();
}

void SubscriberList::EraseInactive() {
    erase_pending_ = false;
    std::erase_if(records_, [](const Record& record) { return !record.active; });
}

}  // namespace fixtop
