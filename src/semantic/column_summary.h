// SPDX-License-Identifier: Apache-2.0
#pragma once

// Figures of a distillation column that no variable of the host holds. All are read from below the
// column on which `it` stands, in the units in which the host shows them, and set as variables on
// `it`, which stays. A variable whose figure can't be told keeps what it had.

#include <cstdint>
#include <optional>
#include <span>

#include "fixtop/iterator.h"

namespace fixtop::semantic {

// What the column tells as its number of trays, in a type to which the vessels can be added;
// nothing when it has no such variable.
std::optional<std::int64_t> CountTrays(FIIteratorBase& it);

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

// Sum of the values of a vessel; 0 without the vessel. `it` stays, as in the next.
double SumVesselValues(FIIteratorBase& it, const char* vessel, std::span<const char* const> names);
// Sum over the first nested element of each of the first 10000 elements of an array.
double SumNestedValues(FIIteratorBase& it, const char* name);

}  // namespace fixtop::semantic
