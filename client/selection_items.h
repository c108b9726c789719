// SPDX-License-Identifier: Apache-2.0
#pragma once

// The module's collections, as selections use them.

#include <string>
#include <vector>

#include "fixtop/collection.h"
#include "fixtop/ref.h"

namespace fixtop::client {

Ref<FICollectionBase> NewCollection();
// With the paths that lead to its nodes as they are called now.
FICollectionBase& ByPresentNames(FICollectionBase& collection);
// On the first item.
Ref<FICollectionIteratorBase> FirstOf(FICollectionBase& collection);
// Of plain text nothing is lost on the way to a file and back.
bool IsPlain(const std::string& path);
// Of the item on which it stands.
std::string PathOf(FICollectionIteratorBase& item);
std::string UnitOf(FICollectionIteratorBase& item);
// The steps of its path, each as it is written there.
std::vector<std::string> StepsOf(FICollectionIteratorBase& item);
// Its node is there, and not shown in the unit that the selection has for it.
bool LacksUnit(FICollectionIteratorBase& item);
// How its path leads to its node, which is there and alive.
int WayOf(FICollectionIteratorBase& item);
// Its node is the one that was chosen, as far as anything tells it.
bool IsKnown(FICollectionIteratorBase& item);

}  // namespace fixtop::client
