// SPDX-License-Identifier: Apache-2.0
#pragma once

// ListIndex: finds an element of a long host list by name or by its place without walking it.
//
// A few indices are kept for the process, one per list and filter, the least used one replaced. An
// index is used only while the list answers the same Revision, not zero, as when it was built:
// revisions are unique in the process, so a new list at an old address is never mistaken. It holds
// hashes of names and places in the list, no host memory, so an outdated index is harmless.

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "fixtop/host/list.h"

namespace fixtop {

class ListIndex {
 public:
    // Lists up to this length are walked.
    static constexpr unsigned kWalkedLength = 8;

    // Answers the name of an element, or null when the filter does not show it.
    struct NameOf {
        const void* view;
        const char* (*ask)(const void* view, void* element);

        const char* operator()(void* element) const { return ask(view, element); }
    };

    struct Answer {
        // False: the index can't tell, the caller has to walk the list.
        bool known = false;
        // The first element of that name in list order, null when there is none.
        const host::ListHolder* holder = nullptr;
    };

    // The index over a list, lent until the next call; null when there is none and the caller has
    // to walk. `filter` tells apart the views of one list. It is built when a list is asked for the
    // second time at the same revision: a list that changes between searches is cheaper to walk.
    static ListIndex* Over(const host::LinkedList& list, int filter, const NameOf& name_of);

    Answer Find(const NameOf& name_of, const char* name);
    // How many elements the filter shows, and the one of a place among them, counted from 0; null
    // behind the last.
    std::size_t Count() const { return places_.size(); }
    const host::ListHolder* At(std::size_t place) const {
        return place < places_.size() ? places_[place] : nullptr;
    }

 private:
    bool Serves(const host::LinkedList& list, int filter, std::uint64_t revision) const {
        return list_ == &list && filter_ == filter && revision_ == revision;
    }
    void Start(const host::LinkedList& list, int filter, std::uint64_t revision, std::uint64_t use);
    void NotePlaces(const NameOf& name_of);
    void NoteNames(const NameOf& name_of);

    const host::LinkedList* list_ = nullptr;
    int filter_ = 0;
    std::uint64_t revision_ = 0;
    std::uint64_t last_use_ = 0;
    bool built_ = false;
    std::vector<const host::ListHolder*> places_;
    // By the hashes of their names; empty until a name is looked for.
    std::unordered_map<std::size_t, const host::ListHolder*> names_;
};

// The indices that are kept, and the count of their uses.
struct ListIndexTable {
    std::array<ListIndex, 16> kept;
    std::uint64_t uses = 0;
    // The place of the one that was asked last: walks ask one list again and again.
    std::ptrdiff_t last = 0;
};

}  // namespace fixtop
