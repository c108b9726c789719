#pragma once

// SubscriberList: who wants to be told of changes. Records may leave in the middle of a round: they
// are skipped for its rest and erased after it.

#include <vector>

#include "framework/entry.h"

class SubscriberList {
 public:
    // `scope` says of what the record wants to hear the end; null is of everything.
    void Add(void* owner, int kind, FICallback callback, const void* scope = nullptr);
    // Takes out the first active record of this owner and kind; false when there is none.
    bool Remove(void* owner, int kind);
    // Event 0 is a change and reaches every active record but those of kind 0; any other event is a
    // deletion and reaches the records of kind 0 that have this scope, or one of both null. Each is
    // called with (owner, kind), in order.
    void Dispatch(int event, const void* scope = nullptr);
    // Frees every record; inside a round the records are only made inactive.
    void Clear();
    bool IsEmpty() const { return records_.empty(); }

 private:
    struct Record {
        int kind;
        void* owner;
        FICallback callback;
        const void* scope;
        bool active;

        bool Wants(bool deletion, const void* of) const {
            if ((kind == kNodeDeleted) != deletion) return false;
            return !deletion || !scope || !of || scope == of;
        }
    };

    void EraseInactive();

    std::vector<Record> records_;
    int rounds_ = 0;
    bool erase_pending_ = false;
};
