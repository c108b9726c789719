// SPDX-License-Identifier: Apache-2.0
#pragma once

// SubscriberList: who wants to be told of changes. Records may leave in the middle of a round: they
// are skipped for its rest and erased after it.

#include <cstdint>
#include <vector>

#include "fixtop/entry.h"

namespace fixtop {

class Liveness;

class SubscriberList {
 public:
    // `scope` says of what the record wants to hear the end; null is of everything.
    void Add(void* owner, int kind, FICallback callback, const Liveness* scope = nullptr);
    // Takes out the first active record of this owner and kind; false when there is none.
    bool Remove(void* owner, int kind);
    // Event 0 is a change and reaches every active record but those of kind 0; any other event is a
    // deletion and reaches the records of kind 0 that have this scope, or one of both null. Each is
    // called with (owner, kind), in order.
    void Dispatch(int event, const Liveness* scope = nullptr);
    // Tells the records of kind 0 of this very scope that were told of no deletion yet.
    void TellEnd(const Liveness* scope);
    // Frees every record; inside a round the records are only made inactive.
    void Clear();
    bool IsEmpty() const { return records_.empty(); }
    // The number of the round that is running, of whichever list; 0 outside of any. What several
    // records hear of one event they hear in one round.
    static std::uint64_t PresentRound() { return present_round_; }

 private:
    struct Record {
        int kind;
        void* owner;
        FICallback callback;
        const Liveness* scope;
        bool active;
        bool told = false;  // of a deletion

        bool Wants(bool deletion, const Liveness* of) const {
            if ((kind == kNodeDeleted) != deletion) return false;
            return !deletion || !scope || !of || scope == of;
        }
    };

    template <class Wanted>
    void Tell(bool deletion, Wanted wanted);
    void EraseInactive();

    static inline std::uint64_t present_round_ = 0;
    static inline std::uint64_t rounds_begun_ = 0;

    std::vector<Record> records_;
    int rounds_ = 0;
    bool erase_pending_ = false;
};

}  // namespace fixtop
