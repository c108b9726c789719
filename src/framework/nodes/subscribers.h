// SPDX-License-Identifier: Apache-2.0
#pragma once

// SubscriberList: who wants to be told of changes. Records may leave in the middle of a round: they
// are skipped for its rest and erased after it. Coming and leaving cost the same however many there
// are: each reference that a client holds comes and leaves with every change of structure. For the
// same reason a record is small: what many have in common is kept once.

#include <cstddef>
#include <cstdint>
#include <deque>
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

 private:
    // What a record wants to hear, and how.
    struct Wish {
        FICallback callback;
        const Liveness* scope;
        int kind;
        std::uint32_t records = 0;  // with this wish; without any its place is free

        bool IsFor(bool deletion, const Liveness* of) const {
            if ((kind == kNodeDeleted) != deletion) return false;
            return !deletion || !scope || !of || scope == of;
        }
        bool IsSame(const Wish& other) const {
            return callback == other.callback && scope == other.scope && kind == other.kind;
        }
    };
    struct Record {
        void* owner;
        std::uint32_t wish;
        bool active = true;
        bool told = false;  // of a deletion
    };
    // Counted on from record to record.
    using Number = std::uint32_t;

    std::uint32_t PlaceOf(const Wish& wanted);
    const Record& At(Number number) const { return records_[number - first_]; }
    int KindOf(const Record& record) const { return wishes_[record.wish].kind; }
    std::size_t HomeOf(const void* owner, int kind) const;
    std::size_t HomeOf(Number number) const { return HomeOf(At(number).owner, KindOf(At(number))); }
    std::size_t After(std::size_t slot) const { return (slot + 1) & (index_.size() - 1); }
    void MakeRoomInIndex();
    void Enter(Number number);
    void Reindex();
    void Vacate(std::size_t slot);
    template <class Wanted>
    void Tell(bool deletion, Wanted wanted);
    // Outside of rounds: frees the inactive records at both ends, or all when they are the most.
    void Tidy();
    void EraseInactive();

    // In the order in which they came.
    std::deque<Record> records_;
    Number first_ = 0;
    std::vector<Wish> wishes_;
    // The numbers of the active ones, plus one, each in the slot that its owner and kind give or in
    // the next free one; 0 is free. Its size is a power of two, or 0.
    std::vector<Number> index_;
    std::size_t active_ = 0;
    int rounds_ = 0;
};

}  // namespace fixtop
