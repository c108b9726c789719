// SPDX-License-Identifier: Apache-2.0
#include "automation/task_memory.h"

#if defined(_WIN32)
#include <objbase.h>
#else
#include <cstdlib>
#endif

namespace fixtop {

void FreeAsClient(void* memory) {
#if defined(_WIN32)
    CoTaskMemFree(memory);
#else
    std::free(memory);
#endif
}

}  // namespace fixtop
