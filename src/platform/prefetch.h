// SPDX-License-Identifier: Apache-2.0
#pragma once

// Asks for memory that will be read in a moment, so that a walk over many objects does not wait for
// each of them in turn. Any address may be given.

#include <cstddef>

namespace fixtop {

inline constexpr std::size_t kCacheLine = 64;

inline void Prefetch(const void* address) {
    __builtin_prefetch(address);
}

// All of an object, or its beginning.
inline void Prefetch(const void* address, std::size_t size) {
    const auto* bytes = static_cast<const char*>(address);
    for (std::size_t at = 0; at < size; at += kCacheLine) Prefetch(bytes + at);
}

}  // namespace fixtop
