// SPDX-License-Identifier: Apache-2.0
#include "diagnostics/memory_guard.h"

namespace fixtop::memory {

namespace {

constinit int g_failures = 0;

}  // namespace

int Failures() noexcept {
    return g_failures;
}

void NoteFailure() noexcept {
    ++g_failures;
}

}  // namespace fixtop::memory
