// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "automation/collection.h"
#include "collection/make_collection.h"

namespace fixtop {

// The object of a new collection, which `fill` fills; null when that answers false.
template <class Fill>
IQSICollection* MakeFilledCollection(Fill fill) {
    Ref<FICollectionBase> made = MakeCollection();
    return fill(*made) ? new CQSICollection(std::move(made)) : nullptr;
}

}  // namespace fixtop
