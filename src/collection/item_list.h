// SPDX-License-Identifier: Apache-2.0
#pragma once

// ItemList: the items of a collection in their order; a link within each of them is all it takes.
// ItemPosition: a place in the list that survives changes: where its item is taken out it stands
// before the one behind, on none.

#include <vector>

#include "collection/element.h"

namespace fixtop {

class ItemPosition;

class ItemList {
 public:
    ItemList() = default;
    ItemList(const ItemList&) = delete;
    ItemList& operator=(const ItemList&) = delete;

    int Count() const { return count_; }
    bool IsEmpty() const { return count_ == 0; }
    FICollectionElement* First() const { return first_; }
    // Null for a place that there is not. Neighbours of the place asked for last are near.
    FICollectionElement* At(int index);
    // Of an item of this list.
    int RankOf(const FICollectionElement& item);
    // Grows with each item that comes or goes.
    std::uint32_t Changes() const { return arrivals_ + departures_; }
    // By what the first items, at most all, are known as long as they are items.
    std::vector<std::uint32_t> FirstArrivals(int count) const;
    // Later than that of any item that there was.
    std::uint32_t NextArrival() const { return arrivals_; }

    void Append(FICollectionElement& item) { Insert(item, nullptr); }
    // Before an item of this list; behind the last for null.
    void Insert(FICollectionElement& item, FICollectionElement* behind);
    void TakeOut(FICollectionElement& item);
    // Takes out all.
    void Clear();

 private:
    friend ItemPosition;

    FICollectionElement* Nearest(int index, int& rank) const;
    void NumberAll();

    FICollectionElement* first_ = nullptr;
    FICollectionElement* last_ = nullptr;
    int count_ = 0;
    std::uint32_t arrivals_ = 0;
    std::uint32_t departures_ = 0;
    // The ranks within the items are right.
    bool is_numbered_ = true;
    // The place asked for last.
    FICollectionElement* found_ = nullptr;
    int found_at_ = 0;
    ItemPosition* positions_ = nullptr;
};

class ItemPosition {
 public:
    // Before the first.
    explicit ItemPosition(ItemList& list);
    // On an item of the list.
    ItemPosition(ItemList& list, FICollectionElement& item);
    ~ItemPosition();
    ItemPosition(const ItemPosition&) = delete;
    ItemPosition& operator=(const ItemPosition&) = delete;

    // Null where it stands on none.
    FICollectionElement* Item() const { return item_; }
    // False, and past the last, when there is none.
    bool First() { return GoTo(list_.first_); }
    bool Next();
    bool Last() { return GoTo(list_.last_); }
    // False before the first.
    bool Previous();
    // No item is before it; no item is at it or behind it.
    bool AtFirst() const { return is_before_all_ || !Before(); }
    bool AtEnd() const { return !is_before_all_ && !item_ && !next_; }

 private:
    friend ItemList;

    bool GoTo(FICollectionElement* item);
    // The item before the place; not asked before the first.
    FICollectionElement* Before() const;
    void OnTakenOut(const FICollectionElement& item);

    ItemList& list_;
    FICollectionElement* item_ = nullptr;
    // What stands behind a place between items.
    FICollectionElement* next_ = nullptr;
    bool is_before_all_ = true;
    ItemPosition* later_;
    ItemPosition** link_;
};

}  // namespace fixtop
