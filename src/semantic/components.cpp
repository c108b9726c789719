// SPDX-License-Identifier: Apache-2.0
// The rows of compositions. The host holds them as parallel arrays, the neutral model wants an
// object for each component: a list counts the array and leaves the number of the row in a
// variable, and each attribute of the row steps to that element of its own array.

#include "fixtop/semantic_functions.h"
#include "semantic/idioms.h"

namespace fixtop {

namespace {

using semantic::CompositionStep;
using semantic::Exported;
using semantic::FlashPhaseStep;
using semantic::IndexList;
using semantic::NestedStep;
using semantic::PhaseComponentStep;

constexpr char kMoleFractions[] = "Comp Mole Frac";
constexpr char kKMixedLiquid[] = "Comp K Value - Mixed Liquid";
constexpr char kKLightLiquid[] = "Comp K Value - Light Liquid";
constexpr char kKHeavyLiquid[] = "Comp K Value - Heavy Liquid";
constexpr char kKLiquids[] = "Comp K Value - Liq1 / Liq2";
constexpr char kPhaseMoleFractions[] = "Phase Comp Mole Frac";

// Numbers of rows.
constexpr char kStreamRow[] = "CmpCnt";
constexpr char kPhaseRow[] = "PhaseCmpCnt";
constexpr char kFluidRow[] = "FluidPhaseCmpCnt";
constexpr char kFlashRow[] = "FlashPhaseCmpCnt";

}  // namespace

// ---- A stream and its K values

int CTComponentArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kStreamRow, {kMoleFractions}); });
}

int CTKVMLArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kStreamRow, {kKMixedLiquid}); });
}

int CTKVLArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kStreamRow, {kKLightLiquid}); });
}

int CTKVL2Array(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kStreamRow, {kKHeavyLiquid}); });
}

int CTKL1L2Array(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kStreamRow, {kKLiquids}); });
}

bool CTComponent(FIIteratorBase* it, int move) {
    return Exported([=] { return CompositionStep(*it, move, kMoleFractions, kStreamRow); });
}

// One node has the component as its key and the fraction as its value.
bool CTMoleFraction(FIIteratorBase* it, int move) {
    return Exported([=] { return CTComponent(it, move); });
}

bool CTMassFraction(FIIteratorBase* it, int move) {
    return Exported(
        [=] { return CompositionStep(*it, move, "Master Comp Mass Frac", kStreamRow); });
}

bool CTVolumeFraction(FIIteratorBase* it, int move) {
    return Exported(
        [=] { return CompositionStep(*it, move, "Master Comp Volume Frac", kStreamRow); });
}

bool CTKVML(FIIteratorBase* it, int move) {
    return Exported([=] { return CompositionStep(*it, move, kKMixedLiquid, kStreamRow); });
}

bool CTKVL(FIIteratorBase* it, int move) {
    return Exported([=] { return CompositionStep(*it, move, kKLightLiquid, kStreamRow); });
}

bool CTKVL2(FIIteratorBase* it, int move) {
    return Exported([=] { return CompositionStep(*it, move, kKHeavyLiquid, kStreamRow); });
}

bool CTKL1L2(FIIteratorBase* it, int move) {
    return Exported([=] { return CompositionStep(*it, move, kKLiquids, kStreamRow); });
}

// ---- One phase of a stream, named by the variable PhaseName

// Every phase has a row for each component, so the vapour's list serves them all.
int CTPhaseComponentArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        return IndexList(*it, index, kPhaseRow, {kPhaseMoleFractions, "Vapour Phase"});
    });
}

bool CTPhaseComponent(FIIteratorBase* it, int move) {
    return Exported([=] { return PhaseComponentStep(*it, move, kPhaseMoleFractions); });
}

bool CTPhaseMoleFraction(FIIteratorBase* it, int move) {
    return Exported([=] { return PhaseComponentStep(*it, move, kPhaseMoleFractions); });
}

bool CTPhaseMassFraction(FIIteratorBase* it, int move) {
    return Exported([=] { return PhaseComponentStep(*it, move, "Phase Comp Mass Frac"); });
}

bool CTPhaseVolumeFraction(FIIteratorBase* it, int move) {
    return Exported([=] { return PhaseComponentStep(*it, move, "Phase Comp Volume Frac"); });
}

// ---- A fluid of a unit operation, and the phases of a flash

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
