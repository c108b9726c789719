// SPDX-License-Identifier: Apache-2.0
#pragma once

// SubscriberList: who wants to be told of changes. Records may leave in the middle of a round: they
// are skipped for its rest and erased after it. Coming and leaving cost the same however many there
// are: each reference that a client holds comes and leaves with every change of structure.

#include <cstdint>
#include <functional>
#include <list>
#include <unordered_set>

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
    struct Record {
        void* owner;
        FICallback callback;
        const Liveness* scope;
        std::uint32_t number;  // the higher, the later it came
        int kind;
        bool active = true;
        bool told = false;  // of a deletion

        bool Wants(bool deletion, const Liveness* of) const {
            if ((kind == kNodeDeleted) != deletion) return false;
            return !deletion || !scope || !of || scope == of;
        }
    };
    using Records = std::list<Record>;
    using Place = Records::iterator;
    // Records are known by their owner and kind, which several may share.
    struct Key {
        const void* owner;
        int kind;
        bool operator==(const Key&) const = default;
    };
    static Key KeyOf(const Key& key) { return key; }
    static Key KeyOf(const Place& place) { return {place->owner, place->kind}; }
    struct Hash {
        using is_transparent = void;
        template <class Known>
        std::size_t operator()(const Known& known) const {
            const Key key = KeyOf(known);
            return std::hash<const void*>()(key.owner) * 3 + static_cast<std::size_t>(key.kind);
        }
    };
    struct Same {
        using is_transparent = void;
        template <class A, class B>
        bool operator()(const A& a, const B& b) const {
            return KeyOf(a) == KeyOf(b);
        }
    };

    template <class Wanted>
    void Tell(bool deletion, Wanted wanted);
    void EraseInactive();

    Records records_;
    // The active ones.
    std::unordered_multiset<Place, Hash, Same> index_;
    std::uint32_t added_ = 0;
    int rounds_ = 0;
    bool erase_pending_ = false;
};

}  // namespace fixtop
