// SPDX-License-Identifier: Apache-2.0
#include "automation/task_memory.h"

#if defined(_WIN32)
#include <objbase.h>
#include <oleauto.h>
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

std::vector<double> TakeReals(Variant& array) {
#if defined(_WIN32)
    auto& variant = reinterpret_cast<VARIANT&>(array);
    void* inside = nullptr;
    LONG last = 0;
    SAFEARRAY* const reals = V_ARRAY(&variant);
    if (SafeArrayGetDim(reals) != 1 || SafeArrayGetUBound(reals, 1, &last) != S_OK) return {-1};
    if (SafeArrayAccessData(reals, &inside) != S_OK) return {-1};
    const auto* const first = static_cast<const double*>(inside);
    std::vector<double> read(first, first + last + 1);
    SafeArrayUnaccessData(reals);
    VariantClear(&variant);
#else
    std::vector<double> read(array.reals, array.reals + array.count);
    std::free(array.reals);
    array = Variant();
#endif
    return read;
}

}  // namespace fixtop
