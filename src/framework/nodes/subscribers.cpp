// SPDX-License-Identifier: Apache-2.0
#include "framework/nodes/subscribers.h"

#include <algorithm>
#include <optional>

#include "diagnostics/memory_guard.h"
#include "framework/nodes/change_round.h"

namespace fixtop {

namespace {

constexpr std::size_t kLeastIndex = 16;
// From here on the numbers begin anew when they can.
constexpr std::uint32_t kManyNumbers = std::uint32_t{1} << 31;

}  // namespace

// There are a handful: references differ in their owners alone.
std::uint32_t SubscriberList::PlaceOf(const Wish& wanted) {
    const auto same = std::ranges::find_if(
        wishes_, [&](const Wish& each) { return each.records > 0 && each.IsSame(wanted); });
    if (same != wishes_.end()) return static_cast<std::uint32_t>(same - wishes_.begin());
    const auto free = std::ranges::find(wishes_, 0u, &Wish::records);
    const auto place = static_cast<std::uint32_t>(free - wishes_.begin());
    if (free == wishes_.end()) {
        wishes_.push_back(wanted);
    } else {
        *free = wanted;
    }
    return place;
}

// Addresses differ in their middle bits.
std::size_t SubscriberList::HomeOf(const void* owner, int kind) const {
    const auto key = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(owner)) * 4 +
                     static_cast<std::uint64_t>(kind);
    return static_cast<std::size_t>((key * 0x9E3779B97F4A7C15u) >> 32) & (index_.size() - 1);
}

void SubscriberList::MakeRoomInIndex() {
    if ((active_ + 1) * 8 <= index_.size() * 7) return;
    std::vector<Number> wider(std::max(kLeastIndex, 2 * index_.size()));
    index_.swap(wider);
    Reindex();
}

void SubscriberList::Enter(Number number) {
    std::size_t slot = HomeOf(number);
    while (index_[slot] != 0) slot = After(slot);
    index_[slot] = number + 1;
}

void SubscriberList::Reindex() {
    std::ranges::fill(index_, 0u);
    for (std::size_t i = 0; i < records_.size(); ++i) {
        if (records_[i].active) Enter(first_ + static_cast<Number>(i));
    }
}

// What was pushed on from this slot comes back, so that no search ends before it.
void SubscriberList::Vacate(std::size_t slot) {
    const std::size_t mask = index_.size() - 1;
    for (std::size_t next = After(slot); index_[next] != 0; next = After(next)) {
        const std::size_t home = HomeOf(index_[next] - 1);
        if (((next - home) & mask) < ((next - slot) & mask)) continue;
        index_[slot] = index_[next];
        slot = next;
    }
    index_[slot] = 0;
}

void SubscriberList::Add(void* owner, int kind, FICallback callback, const Liveness* scope) {
    MakeRoomInIndex();
    const std::uint32_t wish = PlaceOf({callback, scope, kind});
    records_.push_back({owner, wish});
    ++wishes_[wish].records;
    ++active_;
    Enter(first_ + static_cast<Number>(records_.size() - 1));
}

bool SubscriberList::Remove(void* owner, int kind) {
    if (active_ == 0) return false;
    std::optional<std::size_t> found;
    for (std::size_t slot = HomeOf(owner, kind); index_[slot] != 0; slot = After(slot)) {
        const Number number = index_[slot] - 1;
        if (At(number).owner != owner || KindOf(At(number)) != kind) continue;
        if (!found || number < index_[*found] - 1) found = slot;
    }
    if (!found) return false;
    Record& record = records_[index_[*found] - 1 - first_];
    Vacate(*found);
    record.active = false;
    --active_;
    if (rounds_ == 0) Tidy();
    return true;
}

// Who comes during the round waits for the next, or one that leaves and comes back would be called
// without end.
template <class Wanted>
void SubscriberList::Tell(bool deletion, Wanted wanted) {
    if (records_.empty()) return;
    ++rounds_;
    const ChangeRound round;
    const std::size_t count = records_.size();
    for (std::size_t i = 0; i < count; ++i) {
        Record& record = records_[i];
        if (!record.active || !wanted(record)) continue;
        if (deletion) record.told = true;
        const Wish wish = wishes_[record.wish];
        memory::Outside([&, owner = record.owner] { wish.callback(owner, wish.kind); });
    }
    if (--rounds_ == 0) Tidy();
}

void SubscriberList::Dispatch(int event, const Liveness* scope) {
    const bool deletion = event != 0;
    Tell(deletion,
         [=, this](const Record& record) { return wishes_[record.wish].IsFor(deletion, scope); });
}

void SubscriberList::TellEnd(const Liveness* scope) {
    Tell(true, [=, this](const Record& record) {
        const Wish& wish = wishes_[record.wish];
        return wish.kind == kNodeDeleted && wish.scope == scope && !record.told;
    });
}

void SubscriberList::Clear() {
    for (Record& record : records_) record.active = false;
    active_ = 0;
    std::ranges::fill(index_, 0u);
    if (rounds_ == 0) Tidy();
}

void SubscriberList::Tidy() {
    if (records_.empty()) return;
    if (records_.size() > 2 * active_ || first_ > kManyNumbers) return EraseInactive();
    for (; !records_.front().active; records_.pop_front(), ++first_) {
        --wishes_[records_.front().wish].records;
    }
    for (; !records_.back().active; records_.pop_back()) --wishes_[records_.back().wish].records;
}

void SubscriberList::EraseInactive() {
    for (const Record& record : records_) {
        if (!record.active) --wishes_[record.wish].records;
    }
    std::erase_if(records_, [](const Record& record) { return !record.active; });
    first_ = 0;
    if (active_ == 0) {
        index_ = {};
        wishes_ = {};
    }
    Reindex();
}

}  // namespace fixtop
