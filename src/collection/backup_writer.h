// SPDX-License-Identifier: Apache-2.0
#pragma once

// Writes the backup form: the way to each item step by step, its place and its units. Steps that
// can't be sought are left out with what is below them, and so are steps that lead to no item.

#include "collection/item_list.h"

namespace fixtop {

// `root` is null for an empty collection.
void WriteBackup(FICollectionElement* root, ItemList& items, FIValue& out);

}  // namespace fixtop
