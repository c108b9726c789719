// SPDX-License-Identifier: Apache-2.0
#pragma once

// ItemUnits: the units in which an item is shown, of its value and of its specification, as they
// are called; NULL for the node's own. They are kept as text, whether a node is there or not.

#include "fixtop/value.h"
#include "framework/iterator/iterator.h"

namespace fixtop {

struct ItemUnits {
    FIValue unit;
    FIValue spec_unit;

    bool IsEmpty() const { return unit.IsNull() && spec_unit.IsNull(); }
};

// Those in which an iterator shows the node on which it stands.
ItemUnits UnitsShownBy(FIIterator& it);

// Has an iterator show its node in these and in no others. A unit is sought by its name, and only
// when the node has none of it does a number in front of it count; in one that the node has not it
// is not shown. Whether the value is shown as wanted.
bool ShowIn(const ItemUnits& units, FIIterator& it);

}  // namespace fixtop
