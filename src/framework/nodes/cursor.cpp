// SPDX-License-Identifier: Apache-2.0
#include "framework/nodes/cursor.h"

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

}  // namespace fixtop
