// SPDX-License-Identifier: Apache-2.0
#pragma once

// The maker of selections.

#include "fixtop/collection.h"
#include "fixtop/ref.h"

namespace fixtop {

// A new one without items.
Ref<FICollectionBase> MakeCollection();

}  // namespace fixtop
