// SPDX-License-Identifier: Apache-2.0
#pragma once

// The class of the neutral model for each kind of unit operation.

#include "fixtop/iterator.h"

namespace fixtop::semantic {

// Writes the class name of the node into `subclass` and sets, on `it`, the variables of that class:
// IsCompressor "YES" or "NO", and what SetColumnBottom and ComputeColumnRatios set. False, with
// nothing written, when the node's type is none of the known ones. `it` stays.
bool ClassifyUnitOperation(FIIteratorBase& it, FIValue& subclass);

}  // namespace fixtop::semantic
