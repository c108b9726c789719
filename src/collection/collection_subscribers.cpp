// SPDX-License-Identifier: Apache-2.0
#include "collection/collection_subscribers.h"

#include <algorithm>

#include "diagnostics/memory_guard.h"

namespace fixtop {

CollectionSubscribers::Record* CollectionSubscribers::Find(void* owner, void* tag) {
    const auto found = std::find_if(records_.begin(), records_.end(), [&](const Record& each) {
        return each.callback && each.owner == owner && each.tag == tag;
    });
    return found == records_.end() ? nullptr : &*found;
}

void CollectionSubscribers::Add(void* owner, void* tag, FICollectionCallback callback) {
    if (Record* known = Find(owner, tag)) {
        known->callback = callback;
    } else {
        records_.push_back({owner, tag, callback});
    }
}

bool CollectionSubscribers::Remove(void* owner, void* tag) {
    Record* known = Find(owner, tag);
    if (!known) return false;
    known->callback = nullptr;
    if (rounds_ == 0) EndRound();
    return true;
}

void CollectionSubscribers::Call(const Record& record, FICollectionElement* item, int kind) {
    const Record called = record;
    memory::Outside([&] { called.callback(called.owner, called.tag, item, kind); });
}

void CollectionSubscribers::EndRound() {
    if (rounds_ > 0 && --rounds_ > 0) return;
    std::erase_if(records_, [](const Record& each) { return !each.callback; });
}

}  // namespace fixtop
