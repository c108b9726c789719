// SPDX-License-Identifier: Apache-2.0
#pragma once

// Memory that runs out to order. In a program with this source every allocation is counted while
// counting is on, and those that were ordered fail: malloc and its kin answer null, so operator new
// throws. Under the sanitizers, which keep malloc for themselves, it is operator new alone.
//
// Not synchronised: one thread counts.

#include <vector>

namespace failing_memory {

inline constexpr long kNone = 0;

// The allocation of this number fails, counted from the next one on, and with `onwards` all behind
// it; kNone for none. Counting is off then.
void Order(long number, bool onwards);
void Count(bool on);
// How many were counted since the order.
long Counted();

// The numbers of the first and the last allocation from each place of the program that is told
// apart by its callers, in order; of what is counted while this is on. It starts anew when it is
// switched on.
void RememberPlaces(bool on);
std::vector<long> Places();

// Counts as long as it lives.
class Counting {
 public:
    Counting() { Count(true); }
    ~Counting() { Count(false); }
    Counting(const Counting&) = delete;
    Counting& operator=(const Counting&) = delete;
};

}  // namespace failing_memory
