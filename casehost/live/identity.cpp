// SPDX-License-Identifier: Apache-2.0
#include "live/identity.h"

#include <vector>

namespace fixtop::casehost {

namespace {

struct Slots {
    std::vector<std::uint32_t> uses;  // odd while the slot is in use
    std::vector<std::uint32_t> free;
};

// Never destroyed: objects may go while the process ends.
Slots& AllSlots() {
    static Slots* const slots = new Slots;
    return *slots;
}

std::uint32_t SlotOf(std::uint64_t identity) {
    return static_cast<std::uint32_t>(identity);
}

}  // namespace

std::uint64_t Identities::Give() {
    Slots& slots = AllSlots();
    if (slots.free.empty()) {
        slots.free.push_back(static_cast<std::uint32_t>(slots.uses.size()));
        slots.uses.push_back(0);
    }
    const std::uint32_t slot = slots.free.back();
    slots.free.pop_back();
    return std::uint64_t{++slots.uses[slot]} << 32 | slot;
}

void Identities::TakeBack(std::uint64_t identity) {
    Slots& slots = AllSlots();
    const std::uint32_t slot = SlotOf(identity);
    // A slot whose uses are at their end is given up rather than begun anew.
    if (++slots.uses[slot] != 0) slots.free.push_back(slot);
    Changed();
}

bool Identities::Lives(std::uint64_t identity) {
    const Slots& slots = AllSlots();
    const std::uint32_t slot = SlotOf(identity);
    return slot < slots.uses.size() && slots.uses[slot] == identity >> 32;
}

}  // namespace fixtop::casehost
