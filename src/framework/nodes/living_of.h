// SPDX-License-Identifier: Apache-2.0
#pragma once

// LivingOf: an entry as the node that tells of its object, null for one that stands on nothing.
// Every level of a path is asked so, and a cast over the bases of an entry compares their names;
// where it ends is remembered for the classes that were asked last.

#include "fixtop/entry.h"
#include "framework/nodes/liveness.h"

namespace fixtop {

// Lent.
const LivingNode* LivingOf(const FIEntry& entry);

}  // namespace fixtop
