// SPDX-License-Identifier: Apache-2.0
// The feeds of a column, each with the stage that it enters.

#include <algorithm>

#include "fixtop/semantic_functions.h"
#include "semantic/column_inlets.h"
#include "semantic/idioms.h"

namespace fixtop {

namespace {

using semantic::CopyOf;

constexpr char kInlets[] = "Inlets";

// One too many is in the list.
int CountFeeds(FIIteratorBase& it) {
    return std::max(semantic::CountChildren(it, {kInlets}) - 1, 0);
}

FIValue FeedName(FIIteratorBase& it, int index) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    if (!semantic::SeekNames(*walker, {kInlets}) || !walker->Down(index)) return FIValue();
    return semantic::ReadChildValue(*walker, "Object Name");
}

// What is not known of this feed stays as it is of the one before.
void SetFeed(FIIteratorBase& it, int index) {
    semantic::SetElementName(it, "FeedElemNum", index);
    const FIValue name = semantic::AsText(FeedName(it, index));
    if (name.IsNull()) return;
    it.SetVarText("FeedName", name);
    const FIValue stage = semantic::FindFeedStage(it, name.ToText());
    if (!stage.IsNull()) it.SetVarText("FeedStage", stage);
}

}  // namespace

int CTColumnFeeds(FIIteratorBase* it, FIValue*, int index) {
    return semantic::Exported([=] {
        if (index == kCountIndex) return CountFeeds(*it);
        SetFeed(*it, index);
        return index;
    });
}

}  // namespace fixtop
