// SPDX-License-Identifier: Apache-2.0
#include "automation/fake_collection.h"
#include "collection/make_collection.h"

namespace fixtop {

Ref<FICollectionBase> MakeCollection() {
    return Ref<FICollectionBase>::Adopt(new FakeCollection);
}

}  // namespace fixtop
