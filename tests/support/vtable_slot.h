// SPDX-License-Identifier: Apache-2.0
#pragma once

// The place of a virtual operation in its class's table of operations, counted from 0, read from
// the pointer to member as the compilers for both platforms encode it. A virtual destructor takes
// two places: a class that begins with one has its next operation at 2; subtract kDestructorSlots
// to count from there.

#include <cstddef>
#include <cstring>

namespace fixtop {

inline constexpr int kDestructorSlots = 2;

// -1 for an operation that is not virtual.
template <class Member>
int VtableSlot(Member member) {
    struct Encoded {
        std::size_t pointer;
        std::ptrdiff_t adjustment;
    } encoded;
    static_assert(sizeof member == sizeof encoded, "not a pointer to a member function");
    std::memcpy(&encoded, &member, sizeof encoded);
    if ((encoded.pointer & 1) == 0) return -1;
    return static_cast<int>((encoded.pointer - 1) / sizeof(void*));
}

}  // namespace fixtop
