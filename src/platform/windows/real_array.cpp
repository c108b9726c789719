// SPDX-License-Identifier: Apache-2.0
#include "platform/real_array.h"

#include <windows.h>
// The component services follow the base header.
#include <oleauto.h>

#include <algorithm>

namespace fixtop {

bool MakeRealArray(std::span<const double> reals, void** array) noexcept {
    void* inside = nullptr;
    SAFEARRAY* const made = SafeArrayCreateVector(VT_R8, 0, static_cast<ULONG>(reals.size()));
    *array = made;
    if (!made || FAILED(SafeArrayAccessData(made, &inside))) return false;
    std::ranges::copy(reals, static_cast<double*>(inside));
    SafeArrayUnaccessData(made);
    return true;
}

void FreeRealArray(void* array) noexcept {
    SafeArrayDestroy(static_cast<SAFEARRAY*>(array));
}

}  // namespace fixtop
