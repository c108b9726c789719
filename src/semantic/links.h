// SPDX-License-Identifier: Apache-2.0
#pragma once

// Objects that the host tells by name: a unit has no node for the stream that is connected to it
// but the stream's name.

#include "fixtop/iterator.h"
#include "fixtop/value.h"

namespace fixtop::semantic {

// So many levels up, to the list in which the owner of the link stands, and to the object of this
// name there; or, where the host keeps streams and unit operations in lists of their own, in those
// of the nearest flowsheet above that has it. False for a name that is NULL or empty and where
// there is no such object; `it` is left that many levels up then.
bool SeekLinked(FIIteratorBase& it, const FIValue& name, int levels);

// The same from the node whose value is the name; stays when that is NULL.
bool FollowLink(FIIteratorBase& it, int levels);

}  // namespace fixtop::semantic
