// SPDX-License-Identifier: Apache-2.0
// The components in a column: of the fluids at its ends, of the liquid that leaves a stage, and of
// the efficiencies of a stage.

#include "fixtop/semantic_functions.h"
#include "semantic/column_inlets.h"
#include "semantic/idioms.h"

namespace fixtop {

namespace {

using semantic::Exported;
using semantic::SeekNames;

constexpr char kMoleFractions[] = "Comp Mole Frac";

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

}  // namespace fixtop
