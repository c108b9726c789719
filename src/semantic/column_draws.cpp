// SPDX-License-Identifier: Apache-2.0
// The side draws of a section of a column. The host has a list for each phase with the name of a
// stream where something is drawn.

#include "fixtop/semantic_functions.h"
#include "semantic/draw_sections.h"
#include "semantic/idioms.h"
#include "semantic/links.h"

namespace fixtop {

namespace {

using semantic::Exported;

constexpr char kStreamId[] = "StreamId";

// In the order of the elements.
constexpr const char* kDrawLists[] = {"Liquid Draw", "Vapour Draw", "Water Draw"};
constexpr int kLastList = 2;

int CountDraws(FIIteratorBase& it, const char* list) {
    const auto has_value = [](FIIteratorBase& draw) { return !semantic::ReadValue(draw).IsNull(); };
    return semantic::CountAcceptedChildren(it, list, has_value, kCountIndex);
}

int CountDraws(FIIteratorBase& it) {
    int count = 0;
    for (const char* list : kDrawLists) count += CountDraws(it, list);
    return count;
}

struct DrawPlace {
    const char* list;
    int index;
};

// Whatever is beyond the others is of the last list.
DrawPlace PlaceOf(FIIteratorBase& it, int index) {
    for (int i = 0; i < kLastList; ++i) {
        const int count = CountDraws(it, kDrawLists[i]);
        if (index < count) return {kDrawLists[i], index};
        index -= count;
    }
    return {kDrawLists[kLastList], index};
}

// Answers the index.
int SetDraw(FIIteratorBase& it, int index) {
    const DrawPlace place = PlaceOf(it, index);
    const FIValue stream = semantic::AsText(
        semantic::ReadElementValue(*semantic::CopyOf(it), place.list, place.index));
    semantic::SetElementName(it, "DrawElemNum", place.index);
    it.SetVarText("Draw", place.list);
    it.SetVarText(kStreamId, stream);
    if (!stream.IsNull()) semantic::SetDrawSection(it, stream.ToText());
    return index;
}

}  // namespace

int CTColumnSideDraws(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return index == kCountIndex ? CountDraws(*it) : SetDraw(*it, index); });
}

bool CTSideDrawFluid(FIIteratorBase* it, int move) {
    return Exported([=] {
        const Ref<FIIteratorBase> walker = semantic::CopyUnlessMove(*it, move);
        FIValue stream;
        return walker->GetVarText(kStreamId, stream) && semantic::SeekLinked(*walker, stream, 1);
    });
}

}  // namespace fixtop
