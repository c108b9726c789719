// SPDX-License-Identifier: Apache-2.0
// The side draws of a section of a column. The host has a list for each phase with the name of a
// stream where something is drawn, and again for each phase a list of sections with all their
// draws.

#include <climits>
#include <string>

#include "fixtop/semantic_functions.h"
#include "semantic/idioms.h"
#include "semantic/links.h"

namespace fixtop {

namespace {

using semantic::CopyOf;
using semantic::Exported;

constexpr char kStreamId[] = "StreamId";

// In the order of the elements.
constexpr const char* kDrawLists[] = {"Liquid Draw", "Vapour Draw", "Water Draw"};
constexpr const char* kSectionLists[] = {"Liquid Draws", "Vapour Draws", "Water Draws"};
constexpr int kLastList = 2;

constexpr int kNoSection = -1;

int CountDraws(FIIteratorBase& it, const char* list) {
    const auto has_value = [](FIIteratorBase& draw) { return !semantic::ReadValue(draw).IsNull(); };
    return semantic::CountAcceptedChildren(it, list, has_value, kCountIndex);
}

int CountAllDraws(FIIteratorBase& it) {
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

int FindSection(FIIteratorBase& it, const char* list, const std::string& stream) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    int section = kNoSection;
    const auto has_draw = [&section, &stream](FIIteratorBase& at) {
        ++section;
        return semantic::HasElement(at, "Vap and Liq draws", stream, INT_MAX);
    };
    const bool found =
        semantic::SeekNames(*walker, {list}) && semantic::FindChild(*walker, has_draw, INT_MAX);
    return found ? section : kNoSection;
}

// A stream that no section draws is put down to the last list.
void SetSection(FIIteratorBase& it, const std::string& stream) {
    int list = 0;
    int section = FindSection(it, kSectionLists[list], stream);
    while (section == kNoSection && list < kLastList) {
        section = FindSection(it, kSectionLists[++list], stream);
    }
    semantic::SetElementName(it, "DrawsElemNum", section);
    it.SetVarText("Draws", kSectionLists[list]);
}

void SetDraw(FIIteratorBase& it, int index) {
    const DrawPlace place = PlaceOf(it, index);
    const FIValue stream =
        semantic::AsText(semantic::ReadElementValue(*CopyOf(it), place.list, place.index));
    semantic::SetElementName(it, "DrawElemNum", place.index);
    it.SetVarText("Draw", place.list);
    it.SetVarText(kStreamId, stream);
    if (!stream.IsNull()) SetSection(it, stream.ToText());
}

}  // namespace

int CTColumnSideDraws(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index == kCountIndex) return CountAllDraws(*it);
        SetDraw(*it, index);
        return index;
    });
}

bool CTSideDrawFluid(FIIteratorBase* it, int move) {
    return Exported([=] {
        const Ref<FIIteratorBase> walker = semantic::CopyUnlessMove(*it, move);
        FIValue stream;
        return walker->GetVarText(kStreamId, stream) && semantic::SeekLinked(*walker, stream, 1);
    });
}

}  // namespace fixtop
