// SPDX-License-Identifier: Apache-2.0
#pragma once

// SmallObject: a base that gives the short-lived objects of a walk (contexts, cursors, entries)
// their memory from lists of freed blocks, one list a size. A walk makes and drops three such
// objects a level, and the heap would take more time than the rest of it.
//
// Blocks are reused within the module only; a list keeps at most kKeptBlocks and gives the rest
// back. Sanitized builds take every block from the heap, so that a use after release is seen.

#include <array>
#include <cstddef>
#include <new>

namespace fixtop {

class SmallObject {
 public:
    static constexpr std::size_t kKeptBlocks = 256;

    static void* operator new(std::size_t size) {
        List* list = ListOf(size);
        if (!list) return ::operator new(size);
        Block* block = list->first;
        if (!block) return ::operator new(BlockSize(size));
        list->first = block->next;
        --list->count;
        return block;
    }
    static void operator delete(void* block, std::size_t size) noexcept {
        List* list = ListOf(size);
        if (!list || list->count >= kKeptBlocks) {
            ::operator delete(block);
            return;
        }
        list->first = ::new (block) Block{list->first};
        ++list->count;
    }

 protected:
    ~SmallObject() = default;

 private:
    struct Block {
        Block* next;
    };
    struct List {
        Block* first = nullptr;
        std::size_t count = 0;
    };

    static constexpr std::size_t kStep = 16;
    static constexpr std::size_t kClasses = 32;
    // What the heap keeps beside each block: sizes that leave room for it waste nothing.
    static constexpr std::size_t kHeader = 8;
#if defined(__SANITIZE_ADDRESS__)
    static constexpr bool kReuses = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
    static constexpr bool kReuses = false;
#else
    static constexpr bool kReuses = true;
#endif
#else
    static constexpr bool kReuses = true;
#endif

    // Null for sizes that are not kept.
    static List* ListOf(std::size_t size) {
        const std::size_t index = (size + kHeader - 1) / kStep;
        return kReuses && index < kClasses ? &lists_[index] : nullptr;
    }
    static constexpr std::size_t BlockSize(std::size_t size) {
        return (size + kHeader + kStep - 1) / kStep * kStep - kHeader;
    }

    // Constant-initialised and never destroyed: objects may be released while the process ends.
    static std::array<List, kClasses> lists_;
};

inline constinit std::array<SmallObject::List, SmallObject::kClasses> SmallObject::lists_;

}  // namespace fixtop
