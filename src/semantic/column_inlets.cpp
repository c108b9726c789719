// SPDX-License-Identifier: Apache-2.0
#include "semantic/column_inlets.h"

#include <algorithm>

#include "fixtop/semantic_functions.h"
#include "semantic/idioms.h"

namespace fixtop {

namespace semantic {

namespace {

constexpr char kInlets[] = "Inlets";
constexpr char kInletStages[] = "Inlet Stream Stages";
constexpr char kObjectName[] = "Object Name";

constexpr int kStageLimit = 10000;
constexpr int kStreamLimit = 10000;

// The list of that id behind the first one.
bool SeekNumberedStages(FIIteratorBase& it) {
    if (!SeekNames(it, {kInletStages})) return false;
    while (it.Next()) {
        if (ReadId(it).ToText() == kInletStages) return true;
    }
    return false;
}

// One too many is in the list.
int CountFeeds(FIIteratorBase& it) {
    return std::max(CountChildren(it, {kInlets}) - 1, 0);
}

FIValue FeedName(FIIteratorBase& it, int index) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    if (!SeekNames(*walker, {kInlets}) || !walker->Down(index)) return FIValue();
    return ReadChildValue(*walker, kObjectName);
}

// What is not known of this feed stays as it is of the one before.
void SetFeed(FIIteratorBase& it, int index) {
    SetElementName(it, "FeedElemNum", index);
    const FIValue name = AsText(FeedName(it, index));
    if (name.IsNull()) return;
    it.SetVarText("FeedName", name);
    const FIValue stage = FindFeedStage(it, name.ToText());
    if (!stage.IsNull()) it.SetVarText("FeedStage", stage);
}

}  // namespace

bool IsInletStage(FIIteratorBase& it, const std::string& stage) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    if (stage.empty() || !SeekNames(*walker, {kInletStages})) return false;
    const auto has_name = [&stage](FIIteratorBase& inlet) {
        return ReadChildValue(inlet, kObjectName).ToText() == stage;
    };
    return FindChild(*walker, has_name, kStageLimit);
}

FIValue FindFeedStage(FIIteratorBase& it, const std::string& feed) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    if (!SeekNumberedStages(*walker)) return FIValue();
    const auto has_feed = [&feed](FIIteratorBase& stage) {
        return HasElement(stage, "Stage Stream Names", feed, kStreamLimit);
    };
    if (!FindChild(*walker, has_feed, kStageLimit)) return FIValue();
    return FIValue::OfInt(ReadChildValue(*walker, "Stage Number").AsInt());
}

FIValue FirstFeedComponentId(FIIteratorBase& it, int component) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    const bool found = SeekNames(*walker, {kInletStages}) && walker->DownFirst() &&
                       walker->DownFirst() && SeekNames(*walker, {"Comp Mole Frac"}) &&
                       walker->Down(component);
    return found ? AsText(ReadId(*walker)) : FIValue();
}

}  // namespace semantic

int CTColumnFeeds(FIIteratorBase* it, FIValue*, int index) {
    return semantic::Exported([=] {
        if (index == kCountIndex) return semantic::CountFeeds(*it);
        semantic::SetFeed(*it, index);
        return index;
    });
}

}  // namespace fixtop
