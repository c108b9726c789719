// SPDX-License-Identifier: Apache-2.0
#include "framework/nodes/small_object.h"

#include <array>
#include <new>

namespace fixtop {

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kReuses = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kReuses = false;
#else
constexpr bool kReuses = true;
#endif
#else
constexpr bool kReuses = true;
#endif

constexpr std::size_t kStep = 16;
constexpr std::size_t kClasses = 32;
// What the heap keeps beside each block: sizes that leave room for it waste nothing.
constexpr std::size_t kHeader = 8;

struct FreeBlock {
    FreeBlock* next;
};

struct FreeList {
    FreeBlock* first = nullptr;
    std::size_t count = 0;
};

// Constant-initialised and never destroyed: objects may be released while the process ends.
constinit std::array<FreeList, kClasses> g_lists;

// Null for sizes that are not kept.
FreeList* ListOf(std::size_t size) {
    const std::size_t index = (size + kHeader - 1) / kStep;
    return kReuses && index < kClasses ? &g_lists[index] : nullptr;
}

std::size_t BlockSize(std::size_t size) {
    return (size + kHeader + kStep - 1) / kStep * kStep - kHeader;
}

}  // namespace

void* SmallObject::operator new(std::size_t size) {
    FreeList* list = ListOf(size);
    if (!list) return ::operator new(size);
    FreeBlock* block = list->first;
    if (!block) return ::operator new(BlockSize(size));
    list->first = block->next;
    --list->count;
    return block;
}

void SmallObject::operator delete(void* block, std::size_t size) noexcept {
    FreeList* list = ListOf(size);
    if (!list || list->count >= kKeptBlocks) {
        ::operator delete(block);
        return;
    }
    list->first = ::new (block) FreeBlock{list->first};
    ++list->count;
}

}  // namespace fixtop
