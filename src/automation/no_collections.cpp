// SPDX-License-Identifier: Apache-2.0
#include "collection/make_collection.h"

namespace fixtop {

// There are none yet.
Ref<FICollectionBase> MakeCollection() {
    return {};
}

}  // namespace fixtop
