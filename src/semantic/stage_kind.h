// SPDX-License-Identifier: Apache-2.0
#pragma once

// The kind of a stage of a column, of which the host says nothing: it is told by names and by what
// flows in and out.

#include "fixtop/iterator.h"
#include "fixtop/semantic_function.h"

namespace fixtop::semantic {

// Sets the variable StageElemNo; answers the stage.
int SetStageNumber(FIIteratorBase& it, int stage);
// Sets the variables IsCondenser, IsReboiler, IsFeed, IsDraw and IsReturn to 1 or 0, as INTs. `it`
// stands on the column and stays.
void SetStageKind(FIIteratorBase& it, int stage);

// The list of stages with these five late.
extern const LateVariables kStageKinds;

}  // namespace fixtop::semantic
