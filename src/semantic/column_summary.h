// SPDX-License-Identifier: Apache-2.0
#pragma once

// Figures of a distillation column that no variable of the host holds. All are read from below the
// column on which `it` stands, in the units in which the host shows them, and set as variables on
// `it`, which stays. A variable whose figure can't be told keeps what it had.

#include <span>

#include "fixtop/iterator.h"

namespace fixtop::semantic {

// `Bottom`: the stage of the reboiler, as an INT. Stage 0 is the condenser and the trays follow.
void SetColumnBottom(FIIteratorBase& it);

// Ratios and rates of the products, each molar and by mass, as REALs:
//   MolarRefluxRatio, MassRefluxRatio          reflux / (overhead + distillate)
//   MolarDistillateRate, MassDistillateRate    overhead + distillate
//   MolarBoilupRatio, MassBoilupRatio          boilup / bottom liquid
//   MolarBottomsRate, MassBottomsRate          bottom liquid
//   MolarDistillateToFeed, MassDistillateToFeed, MolarBottomsToFeed, MassBottomsToFeed
// Ratio and rate are not set when their product flow is 0, a product to feed ratio unless product
// and feed are both above 0.
void ComputeColumnRatios(FIIteratorBase& it);

// To the vessel of this object name, two frames down; false, in place, when the column has none
// among its first 1000.
bool FindVessel(FIIteratorBase& it, const char* name);
// Value of a child as a real; 0 when it is missing or NULL. `it` stays, as in the next two.
double ReadValueHere(FIIteratorBase& it, const char* name);
// Sum of the values of a vessel; 0 without the vessel.
double SumVesselValues(FIIteratorBase& it, const char* vessel, std::span<const char* const> names);
// Sum over the first nested element of each of the first 10000 elements of an array.
double SumNestedValues(FIIteratorBase& it, const char* name);

}  // namespace fixtop::semantic
