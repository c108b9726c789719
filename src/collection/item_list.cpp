// SPDX-License-Identifier: Apache-2.0
#include "collection/item_list.h"

#include <algorithm>
#include <cstdlib>

namespace fixtop {

// ---- the list ----

// Of the ends and the place asked for last.
FICollectionElement* ItemList::Nearest(int index, int& rank) const {
    FICollectionElement* nearest = first_;
    rank = 0;
    if (count_ - 1 - index < index) {
        nearest = last_;
        rank = count_ - 1;
    }
    if (found_ && std::abs(found_at_ - index) < std::abs(rank - index)) {
        nearest = found_;
        rank = found_at_;
    }
    return nearest;
}

FICollectionElement* ItemList::At(int index) {
    if (index < 0 || index >= count_) return nullptr;
    int rank = 0;
    FICollectionElement* item = Nearest(index, rank);
    for (; rank < index; ++rank) item = item->next_;
    for (; rank > index; --rank) item = item->previous_;
    found_ = item;
    found_at_ = index;
    return item;
}

void ItemList::NumberAll() {
    int rank = 0;
    for (FICollectionElement* each = first_; each; each = each->next_) each->rank_ = rank++;
    is_numbered_ = true;
}

int ItemList::RankOf(const FICollectionElement& item) {
    if (!is_numbered_) NumberAll();
    return item.rank_;
}

std::vector<std::uint32_t> ItemList::FirstArrivals(int count) const {
    std::vector<std::uint32_t> arrivals;
    arrivals.reserve(static_cast<std::size_t>(std::clamp(count, 0, count_)));
    for (const auto* each = first_; each && count > 0; each = each->next_, --count) {
        arrivals.push_back(each->arrival_);
    }
    return arrivals;
}

void ItemList::Insert(FICollectionElement& item, FICollectionElement* behind) {
    item.is_item_ = true;
    if (item.position == FICollectionElement::kNoItem) {
        item.position = FICollectionElement::kUnstated;
    }
    item.previous_ = behind ? behind->previous_ : last_;
    item.next_ = behind;
    (item.previous_ ? item.previous_->next_ : first_) = &item;
    (behind ? behind->previous_ : last_) = &item;
    item.rank_ = count_++;
    item.arrival_ = arrivals_++;
    if (!behind) return;
    is_numbered_ = false;
    // Nobody knows on which side the place asked for last was.
    found_ = nullptr;
}

void ItemList::TakeOut(FICollectionElement& item) {
    for (ItemPosition* each = positions_; each; each = each->later_) each->OnTakenOut(item);
    if (&item != last_) is_numbered_ = false;
    // The one behind it takes its place; of others nobody knows on which side they were.
    found_ = &item == found_ ? item.next_ : nullptr;
    (item.previous_ ? item.previous_->next_ : first_) = item.next_;
    (item.next_ ? item.next_->previous_ : last_) = item.previous_;
    item.next_ = item.previous_ = nullptr;
    item.is_item_ = false;
    item.position = FICollectionElement::kNoItem;
    --count_;
    ++departures_;
}

void ItemList::Clear() {
    while (last_) TakeOut(*last_);
    is_numbered_ = true;
}

// ---- a position ----

ItemPosition::ItemPosition(ItemList& list)
    : list_(list), later_(list.positions_), link_(&list.positions_) {
    if (later_) later_->link_ = &later_;
    *link_ = this;
}

ItemPosition::ItemPosition(ItemList& list, FICollectionElement& item) : ItemPosition(list) {
    GoTo(&item);
}

ItemPosition::~ItemPosition() {
    *link_ = later_;
    if (later_) later_->link_ = link_;
}

bool ItemPosition::GoTo(FICollectionElement* item) {
    item_ = item;
    next_ = nullptr;
    is_before_all_ = false;
    return item != nullptr;
}

bool ItemPosition::Next() {
    if (is_before_all_) return First();
    return GoTo(item_ ? item_->next_ : next_);
}

FICollectionElement* ItemPosition::Before() const {
    if (item_) return item_->previous_;
    return next_ ? next_->previous_ : list_.last_;
}

bool ItemPosition::Previous() {
    FICollectionElement* const item = is_before_all_ ? nullptr : Before();
    GoTo(item);
    is_before_all_ = !item;
    return item != nullptr;
}

void ItemPosition::OnTakenOut(const FICollectionElement& item) {
    if (item_ == &item) {
        item_ = nullptr;
        next_ = item.next_;
    } else if (next_ == &item) {
        next_ = item.next_;
    }
}

}  // namespace fixtop
