// SPDX-License-Identifier: Apache-2.0
#pragma once

// ReadAhead: where a read of a node is going to look: the node, what it shares with its siblings,
// and the object that it stands on. Each lies behind the one before, so that a reader who knew
// nothing would wait for them one by one. They are asked for and never followed: what lay there may
// be gone by now.

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <utility>

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

// NearReads: the same as whoever keeps it for long has it, in half of the room: by how far each
// lies from its owner. What lies too far is not asked for.
class NearReads {
 public:
    void Note(const void* owner, const ReadAhead& ahead) {
        const void* const places[] = {ahead.node, ahead.family, ahead.object};
        for (std::size_t i = 0; i < steps_.size(); ++i) steps_[i] = StepsTo(owner, places[i]);
    }
    void Ask(const void* owner) const {
        for (const std::int32_t steps : steps_) {
            const auto way = static_cast<std::intptr_t>(steps) * kStep;
            Prefetch(static_cast<const char*>(owner) + way, ReadAhead::kAsked);
        }
    }

 private:
    static constexpr std::intptr_t kStep = 16;

    static std::intptr_t Number(const void* place) {
        return static_cast<std::intptr_t>(reinterpret_cast<std::uintptr_t>(place));
    }
    // To the owner itself, where there is nothing to be asked for.
    static std::int32_t StepsTo(const void* owner, const void* place) {
        const std::intptr_t steps = place ? (Number(place) - Number(owner)) / kStep : 0;
        return std::in_range<std::int32_t>(steps) ? static_cast<std::int32_t>(steps) : 0;
    }

    std::array<std::int32_t, 3> steps_{};
};

}  // namespace fixtop
