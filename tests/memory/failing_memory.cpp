// SPDX-License-Identifier: Apache-2.0
#include "memory/failing_memory.h"

#include <execinfo.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace failing_memory {

namespace {

constinit bool g_counting = false;
constinit bool g_remembering = false;
constinit bool g_onwards = false;
constinit long g_fails_at = kNone;
constinit long g_counted = 0;

// A table of places, filled without taking memory.
struct Place {
    std::uint64_t callers;
    long first, last;
};
constexpr std::size_t kPlaces = 1 << 16;
constexpr int kCallers = 14;
Place g_places[kPlaces];

std::uint64_t HashOfCallers() {
    void* callers[kCallers];
    const int count = backtrace(callers, kCallers);
    std::uint64_t hash = 14695981039346656037U;
    for (int i = 0; i < count; ++i) {
        hash = (hash ^ reinterpret_cast<std::uintptr_t>(callers[i])) * 1099511628211U;
    }
    return hash | 1;
}

void Remember(long number) {
    const std::uint64_t callers = HashOfCallers();
    for (std::size_t i = callers % kPlaces;; i = (i + 1) % kPlaces) {
        Place& place = g_places[i];
        if (place.callers == 0) place = {callers, number, number};
        if (place.callers != callers) continue;
        place.last = number;
        return;
    }
}

// Counts an allocation; whether it is to fail.
bool Fails() {
    if (!g_counting) return false;
    ++g_counted;
    if (g_remembering) {
        // What is taken to find out who calls is not counted.
        g_counting = false;
        Remember(g_counted);
        g_counting = true;
    }
    if (g_fails_at == kNone || g_counted < g_fails_at) return false;
    return g_onwards || g_counted == g_fails_at;
}

void* Null() {
    errno = ENOMEM;
    return nullptr;
}

}  // namespace

void Order(long number, bool onwards) {
    g_counting = false;
    g_fails_at = number;
    g_onwards = onwards;
    g_counted = 0;
}

void Count(bool on) {
    g_counting = on;
}

long Counted() {
    return g_counted;
}

void RememberPlaces(bool on) {
    g_remembering = on;
    if (on) std::fill(g_places, g_places + kPlaces, Place{});
    // The first trace loads what it needs.
    if (on) HashOfCallers();
}

std::vector<long> Places() {
    std::vector<long> numbers;
    for (const Place& place : g_places) {
        if (place.callers == 0) continue;
        numbers.push_back(place.first);
        if (place.last != place.first) numbers.push_back(place.last);
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

}  // namespace failing_memory

#if defined(__SANITIZE_ADDRESS__)

void* operator new(std::size_t size) {
    void* block = failing_memory::Fails() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (block) return block;
    throw std::bad_alloc();
}
void* operator new[](std::size_t size) {
    return operator new(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return failing_memory::Fails() ? nullptr : std::malloc(size == 0 ? 1 : size);
}
void* operator new[](std::size_t size, const std::nothrow_t& none) noexcept {
    return operator new(size, none);
}
void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete[](void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    std::free(block);
}

#else

extern "C" {

// Those of the C library behind the names that stand below.
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

void* malloc(std::size_t size) {
    return failing_memory::Fails() ? failing_memory::Null() : __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
    return failing_memory::Fails() ? failing_memory::Null() : __libc_calloc(count, size);
}
void* realloc(void* block, std::size_t size) {
    return failing_memory::Fails() ? failing_memory::Null() : __libc_realloc(block, size);
}
}

#endif
