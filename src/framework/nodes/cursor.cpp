// SPDX-License-Identifier: Apache-2.0
#include "framework/nodes/cursor.h"

#include "diagnostics/seek_table.h"
#include "fixtop/entry.h"

namespace fixtop {

bool FICursorBase::SeekValue(int origin, FIEntry& entry) {
    FIValue name;
    entry.GetName(name);
    name.ConvertTo(FIValue::kShortText);
    return SeekName(origin, name.CStr());
}

bool FICursorBase::IsHidden() {
    return false;
}

int CompareKeys(FICursorPosition& own, FICursorPosition& other) {
    if (&other == &own) return 0;
    FIValue own_key;
    FIValue other_key;
    own.GetKey(own_key);
    other.GetKey(other_key);
    return own_key.Compare(other_key);
}

namespace {

// The count of a singleton, which nothing raises, is never more than one.
void PartFrom(int holders, Ref<FICursorBase>& cursor) {
    if (holders <= 1) return;
    RecordSeek(holders);
    if (holders > 2) cursor = Ref<FICursorBase>::Adopt(cursor->Clone(true));
}

}  // namespace

void Unshare(Ref<FICursorBase>& cursor) {
    const int holders = cursor->AddRef() - 1;
    cursor->Release();
    PartFrom(holders, cursor);
}

Ref<FICursorBase> ShareToMove(const Ref<FICursorBase>& held) {
    const int holders = held->AddRef();
    Ref<FICursorBase> cursor = Ref<FICursorBase>::Adopt(held.Get());
    PartFrom(holders, cursor);
    return cursor;
}

}  // namespace fixtop
