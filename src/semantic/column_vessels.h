// SPDX-License-Identifier: Apache-2.0
#pragma once

// The vessels of a column: the elements of the host's list "Vessels", each known by its object
// name.

#include "fixtop/iterator.h"

namespace fixtop::semantic {

inline constexpr char kCondenser[] = "Condenser";
inline constexpr char kReboiler[] = "Reboiler";

// To the vessel of this object name, two frames down; false, in place, when the column has none
// among its first 1000.
bool FindVessel(FIIteratorBase& it, const char* name);

}  // namespace fixtop::semantic
