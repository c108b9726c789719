// SPDX-License-Identifier: Apache-2.0
#pragma once

// Which of the iterators that clients give are this module's own: another copy of the module may
// have made them, or a client.

#include "framework/iterator/iterator.h"

namespace fixtop {

// Null when it is not one of this module's.
inline FIIterator* OwnIterator(FIIteratorBase* it) {
    return dynamic_cast<FIIterator*>(it);
}

}  // namespace fixtop
