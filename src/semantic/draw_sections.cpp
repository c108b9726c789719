// SPDX-License-Identifier: Apache-2.0
#include "semantic/draw_sections.h"

#include <climits>

#include "semantic/idioms.h"

namespace fixtop::semantic {

namespace {

constexpr const char* kSectionLists[] = {"Liquid Draws", "Vapour Draws", "Water Draws"};
constexpr int kLastList = 2;

constexpr int kNoSection = -1;

int FindSection(FIIteratorBase& it, const char* list, const std::string& stream) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    int section = kNoSection;
    const auto has_draw = [&section, &stream](FIIteratorBase& at) {
        ++section;
        return HasElement(at, "Vap and Liq draws", stream, INT_MAX);
    };
    const bool found = SeekNames(*walker, {list}) && FindChild(*walker, has_draw, INT_MAX);
    return found ? section : kNoSection;
}

}  // namespace

void SetDrawSection(FIIteratorBase& it, const std::string& stream) {
    int list = 0;
    int section = FindSection(it, kSectionLists[list], stream);
    while (section == kNoSection && list < kLastList) {
        section = FindSection(it, kSectionLists[++list], stream);
    }
    SetElementName(it, "DrawsElemNum", section);
    it.SetVarText("Draws", kSectionLists[list]);
}

}  // namespace fixtop::semantic
