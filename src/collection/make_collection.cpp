// SPDX-License-Identifier: Apache-2.0
#include "collection/make_collection.h"

#include "collection/collection.h"

namespace fixtop {

Ref<FICollectionBase> MakeCollection() {
    return Collection::Make();
}

}  // namespace fixtop
