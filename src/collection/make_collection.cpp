// SPDX-License-Identifier: Apache-2.0
#include "collection/make_collection.h"

#include "collection/collection.h"

namespace fixtop {

Ref<FICollectionBase> MakeCollection() {
    return Collection::Make();
}

Ref<FICollectionBase> MakeCollectionOf(const char* selection, FIIteratorBase& from) {
    Ref<FICollectionBase> made = Collection::Make();
    const bool is_read = static_cast<Collection&>(*made).LoadPaths(selection, from);
    return is_read ? std::move(made) : Ref<FICollectionBase>();
}

}  // namespace fixtop
