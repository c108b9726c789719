// SPDX-License-Identifier: Apache-2.0
// The streams of condenser and reboiler of a column. Each vessel has a variable with the stream's
// name.

#include "fixtop/semantic_functions.h"
#include "semantic/column_vessels.h"
#include "semantic/idioms.h"
#include "semantic/links.h"

namespace fixtop {

namespace {

using semantic::Exported;
using semantic::kCondenser;
using semantic::kReboiler;

// Levels from the variable that holds a name to the list in which the column stands: out of the
// variable and the vessel, and of the list of vessels and the column.
constexpr int kLevelsOfVessel = 4;

bool VesselStep(FIIteratorBase& it, int move, const char* vessel, const char* name) {
    const Ref<FIIteratorBase> walker = semantic::CopyUnlessMove(it, move);
    return semantic::FindVessel(*walker, vessel) && semantic::SeekNames(*walker, {name}) &&
           semantic::FollowLink(*walker, kLevelsOfVessel);
}

}  // namespace

// ---- The condenser

bool CTCondVapor(FIIteratorBase* it, int move) {
    return Exported([=] { return VesselStep(*it, move, kCondenser, "Overhead Vapour Stream"); });
}

bool CTCondDistillate(FIIteratorBase* it, int move) {
    return Exported([=] { return VesselStep(*it, move, kCondenser, "Distillate Stream"); });
}

bool CTCondHeavyDistillate(FIIteratorBase* it, int move) {
    return Exported([=] { return VesselStep(*it, move, kCondenser, "Heavy Liquid Stream"); });
}

bool CTCondReflux(FIIteratorBase* it, int move) {
    return Exported([=] { return VesselStep(*it, move, kCondenser, "Reflux Stream"); });
}

// ---- The reboiler

bool CTRebBoilup(FIIteratorBase* it, int move) {
    return Exported([=] { return VesselStep(*it, move, kReboiler, "Boilup Stream"); });
}

bool CTRebLiquid(FIIteratorBase* it, int move) {
    return Exported([=] { return VesselStep(*it, move, kReboiler, "Liquid Product Stream"); });
}

bool CTRebLiquid2(FIIteratorBase* it, int move) {
    return Exported([=] { return VesselStep(*it, move, kReboiler, "2nd Liquid Draw Stream"); });
}

bool CTRebVapor(FIIteratorBase* it, int move) {
    return Exported([=] { return VesselStep(*it, move, kReboiler, "Vapour Draw Stream"); });
}

}  // namespace fixtop
