// SPDX-License-Identifier: Apache-2.0
#pragma once

// ReadAhead: where a read of a node is going to look: the node, what it shares with its siblings,
// and the object that it stands on. Each lies behind the one before, so that a reader who knew
// nothing would wait for them one by one. They are asked for and never followed: what lay there may
// be gone by now.

#include <cstddef>
#include <initializer_list>

#include "platform/prefetch.h"

namespace fixtop {

struct ReadAhead {
    const void* node = nullptr;
    const void* family = nullptr;
    const void* object = nullptr;

    void Ask() const {
        for (const void* each : {node, family, object}) Prefetch(each, kAsked);
    }

    // Of each, what a read looks at, wherever in a line of the cache it begins.
    static constexpr std::size_t kAsked = 2 * kCacheLine;
};

}  // namespace fixtop
