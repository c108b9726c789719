// SPDX-License-Identifier: Apache-2.0
// The streams that are connected to the parts of a column, and the reboiler of a side column. Each
// part has a variable with the stream's name.

#include <cstring>
#include <string>

#include "fixtop/semantic_functions.h"
#include "semantic/column_vessels.h"
#include "semantic/idioms.h"
#include "semantic/links.h"

namespace fixtop {

namespace {

using semantic::CopyUnlessMove;
using semantic::Exported;
using semantic::FollowLink;
using semantic::kCondenser;
using semantic::kReboiler;
using semantic::SeekNames;

constexpr char kBottomLiquid[] = "bottom liquid product";
constexpr char kUnitBelow[] = "\"Downstream Unit Operations\".\"Elem0\"";

// Levels from the variable that holds a name to the list in which its owner stands: out of the
// variable and its owner, and of the list of vessels and its column.
constexpr int kLevelsOfUnit = 2;
constexpr int kLevelsOfVessel = 4;
// The same from an element of an array.
constexpr int kLevelsOfElement = 3;

bool VesselStreamStep(FIIteratorBase& it, int move, const char* vessel, const char* name) {
    const Ref<FIIteratorBase> walker = CopyUnlessMove(it, move);
    return semantic::FindVessel(*walker, vessel) && SeekNames(*walker, {name}) &&
           FollowLink(*walker, kLevelsOfVessel);
}

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

// A stream between column and side column: in which variable of either kind of side column the host
// has its name, and the iterator's variable that receives it.
struct SideStream {
    const char* variable;
    const char* of_stripper;
    const char* of_rectifier;
};

constexpr SideStream kSideDraw = {"Draw", "top liquid feed", "bottom vapour feed"};
constexpr SideStream kSideReturn = {"Return", "overhead vapour product", kBottomLiquid};

// Null for a section that is no side column.
const char* NameOf(const SideStream& stream, FIIteratorBase& section) {
    const std::string type = semantic::ReadChildValue(section, "Type of Tray Section").ToText();
    if (type == "Side Stripper") return stream.of_stripper;
    return type == "Side Rectifier" ? stream.of_rectifier : nullptr;
}

bool FindSideStream(FIIteratorBase& it, const SideStream& stream) {
    const Ref<FIIteratorBase> walker = semantic::CopyOf(it);
    const char* name = NameOf(stream, *walker);
    if (!name) return false;
    const FIValue linked = semantic::ReadChildValue(*walker, name);
    if (linked.IsNull()) return false;
    it.SetVarText(stream.variable, linked);
    return true;
}

// Asking finds the stream and keeps its name, moving takes the name; so it fails when nothing was
// asked before, and does not when the name leads nowhere.
bool SideStreamStep(FIIteratorBase& it, int move, const SideStream& stream) {
    if (!move) return FindSideStream(it, stream);
    FIValue linked;
    if (!it.GetVarText(stream.variable, linked)) return false;
    semantic::SeekLinked(it, linked, 1);
    return true;
}

}  // namespace

// ---- The condenser

bool CTCondVapor(FIIteratorBase* it, int move) {
    return Exported(
        [=] { return VesselStreamStep(*it, move, kCondenser, "Overhead Vapour Stream"); });
}

bool CTCondDistillate(FIIteratorBase* it, int move) {
    return Exported([=] { return VesselStreamStep(*it, move, kCondenser, "Distillate Stream"); });
}

bool CTCondHeavyDistillate(FIIteratorBase* it, int move) {
    return Exported([=] { return VesselStreamStep(*it, move, kCondenser, "Heavy Liquid Stream"); });
}

bool CTCondReflux(FIIteratorBase* it, int move) {
    return Exported([=] { return VesselStreamStep(*it, move, kCondenser, "Reflux Stream"); });
}

// ---- The reboiler

bool CTRebBoilup(FIIteratorBase* it, int move) {
    return Exported([=] { return VesselStreamStep(*it, move, kReboiler, "Boilup Stream"); });
}

bool CTRebLiquid(FIIteratorBase* it, int move) {
    return Exported(
        [=] { return VesselStreamStep(*it, move, kReboiler, "Liquid Product Stream"); });
}

bool CTRebLiquid2(FIIteratorBase* it, int move) {
    return Exported(
        [=] { return VesselStreamStep(*it, move, kReboiler, "2nd Liquid Draw Stream"); });
}

bool CTRebVapor(FIIteratorBase* it, int move) {
    return Exported([=] { return VesselStreamStep(*it, move, kReboiler, "Vapour Draw Stream"); });
}

// ---- Side columns

bool CTSideColumnDraw(FIIteratorBase* it, int move) {
    return Exported([=] { return SideStreamStep(*it, move, kSideDraw); });
}

bool CTSideColumnReturn(FIIteratorBase* it, int move) {
    return Exported([=] { return SideStreamStep(*it, move, kSideReturn); });
}

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
