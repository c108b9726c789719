// SPDX-License-Identifier: Apache-2.0
// The streams of side columns and pump-arounds, and the reboiler of a side column. Each has a
// variable with the stream's name.

#include <cstring>

#include "fixtop/semantic_functions.h"
#include "semantic/idioms.h"
#include "semantic/links.h"

namespace fixtop {

namespace {

using semantic::CopyUnlessMove;
using semantic::Exported;
using semantic::FollowLink;
using semantic::SeekNames;

constexpr char kBottomLiquid[] = "bottom liquid product";
constexpr char kUnitBelow[] = "\"Downstream Unit Operations\".\"Elem0\"";

// Levels from the variable that holds a name to the list in which its owner stands: out of the
// variable and its owner.
constexpr int kLevelsOfUnit = 2;
// The same from an element of an array.
constexpr int kLevelsOfElement = 3;

bool UnitStreamStep(FIIteratorBase& it, int move, const char* name) {
    const Ref<FIIteratorBase> walker = CopyUnlessMove(it, move);
    return SeekNames(*walker, {name}) && FollowLink(*walker, kLevelsOfUnit);
}

// Any other unit below the side column is no part of it.
bool SideReboilerStep(FIIteratorBase& it, int move) {
    const Ref<FIIteratorBase> walker = CopyUnlessMove(it, move);
    return UnitStreamStep(*walker, 1, kBottomLiquid) && SeekNames(*walker, {kUnitBelow}) &&
           FollowLink(*walker, kLevelsOfElement) &&
           std::strcmp(semantic::ReadType(*walker).CStr(), "BPReboilerObject") == 0;
}

}  // namespace

// ---- Side columns

bool CTSideColumnReboiler(FIIteratorBase* it, int move) {
    return Exported([=] { return SideReboilerStep(*it, move); });
}

bool CTSideColumnBottoms(FIIteratorBase* it, int move) {
    return Exported([=] { return UnitStreamStep(*it, move, kBottomLiquid); });
}

// ---- Pump-arounds

bool CTPumparoundDraw(FIIteratorBase* it, int move) {
    return Exported([=] { return UnitStreamStep(*it, move, "Feed"); });
}

bool CTPumparoundReturn(FIIteratorBase* it, int move) {
    return Exported([=] { return UnitStreamStep(*it, move, "Product"); });
}

}  // namespace fixtop
