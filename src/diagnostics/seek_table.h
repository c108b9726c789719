// SPDX-License-Identifier: Apache-2.0
#pragma once

// How many holders shared a cursor each time it was about to be sought: a table for judging whether
// copies on write are rare. Nothing clears it. Not synchronised.

#include <algorithm>

namespace fixtop {

// The last row also counts every greater number of holders.
inline constexpr int kSeekRows = 20;

inline constinit int g_seeks[kSeekRows] = {};

// Notes a seek of a cursor with this reference count.
inline void RecordSeek(int refcount) noexcept {
    ++g_seeks[std::clamp(refcount, 0, kSeekRows - 1)];
}

// Seeks noted in the row, 0 outside the table.
int SeekCount(int row) noexcept;

// Writes the table to the debug output, a heading and one line for each row.
void PrintSeekTable();

}  // namespace fixtop
