// SPDX-License-Identifier: Apache-2.0
#include "semantic/column_inlets.h"

#include "semantic/idioms.h"

namespace fixtop::semantic {

namespace {

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

}  // namespace fixtop::semantic
