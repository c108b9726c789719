// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the families of cursors share; fixtop/cursor.h tells the operations.

#include "diagnostics/seek_table.h"
#include "fixtop/cursor.h"
#include "fixtop/ref.h"

namespace fixtop {

// By the keys of the present elements, as FIValue::Compare; 0 for a position and itself.
int CompareKeys(FICursorPosition& own, FICursorPosition& other);

namespace detail {

// The count of a singleton, which nothing raises, is never more than one.
inline void PartFrom(int holders, Ref<FICursorBase>& cursor) {
    if (holders <= 1) return;
    RecordSeek(holders);
    if (holders > 2) cursor = Ref<FICursorBase>::Adopt(cursor->Clone(true));
}

}  // namespace detail

// To be called before a held cursor is moved. A cursor held by more than two is replaced by a copy
// of its own; a count of two is the iterator's frame and a temporary of its caller. Sharing is
// recorded in the seek table.
inline void Unshare(Ref<FICursorBase>& cursor) {
    const int holders = cursor->AddRef() - 1;
    cursor->Release();
    detail::PartFrom(holders, cursor);
}

// The same of a further reference to a held cursor, which is answered.
inline Ref<FICursorBase> ShareToMove(const Ref<FICursorBase>& held) {
    const int holders = held->AddRef();
    Ref<FICursorBase> cursor = Ref<FICursorBase>::Adopt(held.Get());
    detail::PartFrom(holders, cursor);
    return cursor;
}

}  // namespace fixtop
