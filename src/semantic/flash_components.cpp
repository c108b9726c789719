// SPDX-License-Identifier: Apache-2.0
// The rows of the compositions of a unit operation's fluids and of the phases of a flash.

#include "fixtop/semantic_functions.h"
#include "semantic/idioms.h"

namespace fixtop {

namespace {

using semantic::Exported;
using semantic::FlashPhaseStep;
using semantic::IndexList;
using semantic::NestedStep;

constexpr char kMoleFractions[] = "Comp Mole Frac";

// Numbers of rows.
constexpr char kFluidRow[] = "FluidPhaseCmpCnt";
constexpr char kFlashRow[] = "FlashPhaseCmpCnt";

}  // namespace

int CTFluidPhaseComponentArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kFluidRow, {kMoleFractions}); });
}

bool CTFluidPhaseComponent(FIIteratorBase* it, int move) {
    return Exported([=] { return NestedStep(*it, move, kFluidRow, {kMoleFractions}); });
}

int CTVaporPhaseComponentArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kFlashRow, {"Vapour", kMoleFractions}); });
}

int CTLiquidPhaseComponentArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kFlashRow, {"Liquid", kMoleFractions}); });
}

// The second liquid is counted under one name of the host and read under another.
int CTLiquid2PhaseComponentArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        return IndexList(*it, index, kFlashRow, {"Heavy Liquid", kMoleFractions});
    });
}

bool CTVaporPhaseComponent(FIIteratorBase* it, int move) {
    return Exported([=] { return FlashPhaseStep(*it, move, "Vapour"); });
}

bool CTLiquidPhaseComponent(FIIteratorBase* it, int move) {
    return Exported([=] { return FlashPhaseStep(*it, move, "Liquid"); });
}

bool CTLiquid2PhaseComponent(FIIteratorBase* it, int move) {
    return Exported([=] { return FlashPhaseStep(*it, move, "Liquid2"); });
}

}  // namespace fixtop
