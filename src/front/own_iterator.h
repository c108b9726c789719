// SPDX-License-Identifier: Apache-2.0
#pragma once

// Which of the iterators that clients give are this module's own: another copy of the module may
// have made them, or a client.

#include <typeinfo>

#include "framework/iterator/shielded_iterator.h"

namespace fixtop {

// Null when it is not one of this module's. Those that it hands out are all of one class, which
// needs no search.
inline FIIterator* OwnIterator(FIIteratorBase* it) {
    if (it && typeid(*it) == typeid(Shielded<FIIterator>)) return static_cast<FIIterator*>(it);
    return dynamic_cast<FIIterator*>(it);
}

}  // namespace fixtop
