// SPDX-License-Identifier: Apache-2.0
#pragma once

// The functions that a map file may name. Each keeps to fixtop/semantic_function.h. The module
// exports them under these plain names.

#include "fixtop/iterator.h"
#include "fixtop/semantic_function.h"
#include "fixtop/value.h"

namespace fixtop {

extern "C" {

#define FIXTOP_STEP(name) bool name(FIIteratorBase* it, int move);
#define FIXTOP_LIST(name) int name(FIIteratorBase* it, FIValue* subclass, int index);
#include "fixtop/semantic_function_list.h"

}  // extern "C"

}  // namespace fixtop
