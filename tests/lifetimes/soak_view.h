// SPDX-License-Identifier: Apache-2.0
#pragma once

// A view that the random client has opened, and the way to what it shows.

#include "lifetimes/making.h"
#include "lifetimes/soak_world.h"

namespace fixtop::lifetimes {

struct SoakView {
    Ref<FIEntry> top;
    Ref<FIEntry> root;
    bool neutral = false;
    int case_number = 0;
    int removals = 0;
};

Path PathTo(const World& world, bool neutral, int number, World::Field field);

}  // namespace fixtop::lifetimes
