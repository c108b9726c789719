// SPDX-License-Identifier: Apache-2.0
#pragma once

// The maker of selections.

#include "fixtop/collection.h"
#include "fixtop/ref.h"

namespace fixtop {

// A new one without items.
Ref<FICollectionBase> MakeCollection();
// A new one of the nodes that a text of the form of selections names, sought from the top of the
// iterator; null when it is no such text.
Ref<FICollectionBase> MakeCollectionOf(const char* selection, FIIteratorBase& from);

}  // namespace fixtop
