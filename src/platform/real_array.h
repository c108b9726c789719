// SPDX-License-Identifier: Apache-2.0
#pragma once

// Arrays of reals that a client of another module frees: the system's own arrays where it has such,
// else task memory.

#include <span>

namespace fixtop {

// False when memory is exhausted. The array of no reals may be null.
bool MakeRealArray(std::span<const double> reals, void** array) noexcept;
// Any null pointer may be freed.
void FreeRealArray(void* array) noexcept;

}  // namespace fixtop
