// SPDX-License-Identifier: Apache-2.0
#pragma once

// CollectionSubscribers: who is told of changes of items. One that leaves in the middle of a round
// is not called any more and erased after it.

#include <vector>

#include "fixtop/collection.h"

namespace fixtop {

class CollectionSubscribers {
 public:
    // In place of the callback that the two words had before.
    void Add(void* owner, void* tag, FICollectionCallback callback);
    bool Remove(void* owner, void* tag);
    bool IsEmpty() const { return records_.empty(); }
    // Calls each that was there at the beginning, until `goes_on` answers false after a call.
    template <class GoesOn>
    void Tell(FICollectionElement* item, int kind, GoesOn goes_on);

 private:
    struct Record {
        void* owner;
        void* tag;
        FICollectionCallback callback;  // null for one that has left
    };

    Record* Find(void* owner, void* tag);
    static void Call(const Record& record, FICollectionElement* item, int kind);
    void EndRound();

    std::vector<Record> records_;
    int rounds_ = 0;
};

template <class GoesOn>
void CollectionSubscribers::Tell(FICollectionElement* item, int kind, GoesOn goes_on) {
    ++rounds_;
    // By index, since who is called may subscribe.
    const std::size_t count = records_.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (!records_[i].callback) continue;
        Call(records_[i], item, kind);
        if (!goes_on()) break;
    }
    EndRound();
}

}  // namespace fixtop
