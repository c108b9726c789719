// SPDX-License-Identifier: Apache-2.0
#include "platform/task_memory.h"

#include <cstdlib>

namespace fixtop {

void* AllocateTaskMemory(std::size_t size) noexcept {
    return std::malloc(size);
}
void FreeTaskMemory(void* memory) noexcept {
    std::free(memory);
}

}  // namespace fixtop
