// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the families of cursors share; fixtop/cursor.h tells the operations.

#include "fixtop/cursor.h"

namespace fixtop {

// By the keys of the present elements, as FIValue::Compare; 0 for a position and itself.
int CompareKeys(FICursorPosition& own, FICursorPosition& other);

// To be called before a held cursor is moved. A cursor held by more than two is replaced by a copy
// of its own; a count of two is the iterator's frame and a temporary of its caller. Sharing is
// recorded in the seek table.
void Unshare(Ref<FICursorBase>& cursor);
// The same of a further reference to a held cursor, which is answered.
Ref<FICursorBase> ShareToMove(const Ref<FICursorBase>& held);

}  // namespace fixtop
