// SPDX-License-Identifier: Apache-2.0
#include "platform/task_memory.h"

#include <windows.h>
// The component services follow the base header.
#include <objbase.h>

namespace fixtop {

void* AllocateTaskMemory(std::size_t size) noexcept {
    return CoTaskMemAlloc(size);
}
void FreeTaskMemory(void* memory) noexcept {
    CoTaskMemFree(memory);
}

}  // namespace fixtop
