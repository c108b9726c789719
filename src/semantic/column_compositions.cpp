// SPDX-License-Identifier: Apache-2.0
// The components in a column: of the fluids at its ends, of the liquid that leaves a stage, of the
// efficiencies of a stage, and of the phases in condenser and reboiler.

#include "fixtop/semantic_functions.h"
#include "semantic/column_inlets.h"
#include "semantic/idioms.h"

namespace fixtop {

namespace {

using semantic::Exported;
using semantic::IndexList;
using semantic::NestedStep;
using semantic::SeekNames;

constexpr char kMoleFractions[] = "Comp Mole Frac";

// Of condenser and reboiler.
constexpr char kVesselRow[] = "FlashPhaseCmpCnt";
constexpr char kVesselFractions[] = "Vessel Mole Frac";
constexpr char kVapourFractions[] = "Vapour Mole Fraction";
constexpr char kLiquidFractions[] = "Liquid Mole Fraction";

// The rows of one stage: an array of the stages below the names, each with an array of the
// components.

int CountRowsOfFirstStage(FIIteratorBase& it, semantic::Names names) {
    const Ref<FIIteratorBase> walker = semantic::CopyOf(it);
    if (!SeekNames(*walker, names) || !walker->DownFirst()) return 0;
    return semantic::CountChildren(*walker, {});
}

void SeekStageRow(FIIteratorBase& it, semantic::Names names, int row) {
    FIValue stage;
    if (!it.GetVarText("StageElemNo", stage)) return;
    if (SeekNames(it, names) && it.Down(stage.AsInt())) it.Down(row);
}

int StageRowList(FIIteratorBase& it, int index, semantic::Names names) {
    if (index == kCountIndex) return CountRowsOfFirstStage(it, names);
    const FIValue component = semantic::FirstFeedComponentId(it, index);
    SeekStageRow(it, names, index);
    if (!component.IsNull()) it.SetVarText("ColumnComponentID", component);
    return index;
}

}  // namespace

int CTColumnCompMoleFrac(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index == kCountIndex) return semantic::CountChildren(*it, {kMoleFractions});
        return semantic::MoveToElement(*it, kMoleFractions, index);
    });
}

// ---- Of a stage, whose number is StageElemNo

int CTLiquidFromComposition(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        return StageRowList(*it, index, {"My SubFlowsheet", "Comp Frac vs Stage"});
    });
}

// The host's array has no other name.
int CTColumnComponentEfficiency(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return StageRowList(*it, index, {"?"}); });
}

// ---- Of condenser and reboiler

int CTCondRebVesselComponentArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kVesselRow, {kVesselFractions}); });
}

int CTCondRebVaporComponentArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kVesselRow, {kVapourFractions}); });
}

int CTCondRebLiquidComponentArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kVesselRow, {kLiquidFractions}); });
}

bool CTCondRebVesselComponent(FIIteratorBase* it, int move) {
    return Exported([=] { return NestedStep(*it, move, kVesselRow, {kVesselFractions}); });
}

bool CTCondRebVaporComponent(FIIteratorBase* it, int move) {
    return Exported([=] { return NestedStep(*it, move, kVesselRow, {kVapourFractions}); });
}

bool CTCondRebLiquidComponent(FIIteratorBase* it, int move) {
    return Exported([=] { return NestedStep(*it, move, kVesselRow, {kLiquidFractions}); });
}

}  // namespace fixtop
