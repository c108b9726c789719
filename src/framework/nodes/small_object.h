// SPDX-License-Identifier: Apache-2.0
#pragma once

// SmallObject: a base that gives the short-lived objects of a walk (contexts, cursors, entries)
// their memory from lists of freed blocks, one list a size. A walk makes and drops three such
// objects a level, and the heap would take more time than the rest of it.
//
// Blocks are reused within the module only; a list keeps at most kKeptBlocks and gives the rest
// back. Sanitized builds take every block from the heap, so that a use after release is seen.

#include <cstddef>

namespace fixtop {

class SmallObject {
 public:
    static constexpr std::size_t kKeptBlocks = 256;

    static void* operator new(std::size_t size);
    static void operator delete(void* block, std::size_t size) noexcept;

 protected:
    ~SmallObject() = default;
};

}  // namespace fixtop
