// SPDX-License-Identifier: Apache-2.0
#pragma once

// Frees what members hand out in task memory, as a client does.

#if defined(_WIN32)
#include <objbase.h>
#else
#include <cstdlib>
#endif

namespace fixtop {

inline void FreeAsClient(void* memory) {
#if defined(_WIN32)
    CoTaskMemFree(memory);
#else
    std::free(memory);
#endif
}

}  // namespace fixtop
