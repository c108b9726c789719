// SPDX-License-Identifier: Apache-2.0
#include "memory.h"

#include <cstdio>
#include <cstdlib>
#include <exception>

#include "exit_code.h"
#include "fixtop/fixtop.h"

namespace fixtop {

namespace {

int g_failures = 0;

void NoteFailure() {
    ++g_failures;
    throw std::bad_alloc();
}

// The parser of the command line takes memory in functions that it declares not to throw.
[[noreturn]] void Terminate() {
    if (MemoryFailures() == 0) std::abort();
    TellOutOfMemory();
    std::_Exit(static_cast<int>(ExitCode::kUnreadable));
}

struct Watch {
    Watch() {
        std::set_new_handler(NoteFailure);
        std::set_terminate(Terminate);
    }
};

// Before the tables of the program and of its libraries, which are filled before it begins.
[[gnu::init_priority(101)]] const Watch g_watch;

}  // namespace

int MemoryFailures() {
    return g_failures + FixtopMemoryFailures();
}

void TellOutOfMemory() {
    std::fflush(stdout);  // what was said before stands before it
    std::fputs("fixtop: out of memory\n", stderr);
}

}  // namespace fixtop
