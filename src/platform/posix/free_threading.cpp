// SPDX-License-Identifier: Apache-2.0
#include "platform/free_threading.h"

namespace fixtop {

FreeThreadedMarshaler::~FreeThreadedMarshaler() = default;

bool FreeThreadedMarshaler::Query(void*, const void*, void** out) noexcept {
    *out = nullptr;
    return false;
}

}  // namespace fixtop
