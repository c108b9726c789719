// SPDX-License-Identifier: Apache-2.0
// Lets memory run out in a program that this library is loaded into before all others. The
// environment says in which allocation:
//
//   FAILING_MEMORY_AT        its number
//   FAILING_MEMORY_ONWARDS   anything: all behind it fail, too
//   FAILING_MEMORY_PLACES    a file that gets, when the program ends, the count of allocations and,
//                            a line each, the numbers of those that stand for a place

#include <cstdio>
#include <cstdlib>

#include "memory/failing_memory.h"

namespace fixtop {

namespace {

struct Preload {
    Preload() {
        const char* const at = std::getenv("FAILING_MEMORY_AT");
        failing_memory::Order(at ? std::atol(at) : failing_memory::kNone,
                              std::getenv("FAILING_MEMORY_ONWARDS") != nullptr);
        if (std::getenv("FAILING_MEMORY_PLACES")) failing_memory::RememberPlaces(true);
        failing_memory::Count(true);
    }
    ~Preload() {
        failing_memory::Count(false);
        const char* const name = std::getenv("FAILING_MEMORY_PLACES");
        std::FILE* const file = name ? std::fopen(name, "w") : nullptr;
        if (!file) return;
        std::fprintf(file, "%ld\n", failing_memory::Counted());
        for (long number : failing_memory::Places()) std::fprintf(file, "%ld\n", number);
        std::fclose(file);
    }
};

const Preload g_preload;

}  // namespace

}  // namespace fixtop
