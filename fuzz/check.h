// SPDX-License-Identifier: Apache-2.0
#pragma once

// The end of a run in which a promise is broken: says which, and aborts, so that the fuzzer keeps
// the input.

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace fixtop {

inline void Check(bool holds, const char* what, std::string_view where = {}) {
    if (holds) return;
    std::fprintf(stderr, "%s%s%.*s\n", what, where.empty() ? "" : ": ",
                 static_cast<int>(where.size()), where.data());
    std::abort();
}

}  // namespace fixtop
