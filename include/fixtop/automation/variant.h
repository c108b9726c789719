// SPDX-License-Identifier: Apache-2.0
#pragma once

// Variant: a value of any type as automation members pass it; on Windows the system's VARIANT. What
// a pointer leads to is in task memory, or the system's array, and belongs to whoever got the
// variant.

#include <cstdint>

namespace fixtop::inline FI {

struct Variant {
    enum Type : std::uint16_t {
        kEmpty = 0,
        kNull = 1,
        kInt = 3,
        kReal = 5,
        kText = 30,
        kRealArray = 0x2005,
    };

    std::uint16_t type = kEmpty;
    std::uint16_t reserved[3] = {};
    union {
        std::int32_t number;
        double real = 0;
        char* text;
        // On Windows of a real array, the system's SAFEARRAY of one dimension, counted from 0.
        void* array;
        // Of a real array elsewhere, `count` of them; null when that is 0.
        double* reals;
    };
    // Of the reals of an array.
    std::int32_t count = 0;
};
static_assert(sizeof(Variant) == 24);

}  // namespace fixtop::inline FI
