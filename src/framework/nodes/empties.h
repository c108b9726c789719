// SPDX-License-Identifier: Apache-2.0
#pragma once

// The shared empties: used instead of null, so that code walks on without tests. Built on first
// use, never destroyed; AddRef answers 1 and Release 0, and nothing is counted.

#include "fixtop/cursor.h"
#include "fixtop/entry.h"

namespace fixtop {

// Name and attributes NULL, no container, context the empty context.
FIEntry* EmptyEntry();
// MakeCursor gives the empty cursor.
FIContext* EmptyContext();
// The cursor over nothing, class EmptyCursorBase.
FICursorBase* EmptyCursor();
// The same for attributes.
FIAttributeCursorBase* EmptyAttributeCursor();

}  // namespace fixtop
