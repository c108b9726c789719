// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "fixtop/automation/variant.h"

namespace fixtop {

// Frees what members hand out in task memory, as a client does: by the system alone.
void FreeAsClient(void* memory);
// The reals of an array, which is freed likewise.
std::vector<double> TakeReals(Variant& array);

}  // namespace fixtop
