// SPDX-License-Identifier: Apache-2.0
#include "platform/real_array.h"

#include <algorithm>

#include "platform/task_memory.h"

namespace fixtop {

bool MakeRealArray(std::span<const double> reals, void** array) noexcept {
    *array = nullptr;
    if (reals.empty()) return true;
    auto* const copy = static_cast<double*>(AllocateTaskMemory(reals.size_bytes()));
    if (!copy) return false;
    std::ranges::copy(reals, copy);
    *array = copy;
    return true;
}

void FreeRealArray(void* array) noexcept {
    FreeTaskMemory(array);
}

}  // namespace fixtop
