// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the program makes of lack of memory: no command during which an allocation failed answers
// "done", whoever passed over it, for what it wrote may lack something.

#include <new>

namespace fixtop {

// How often memory ran out since the program was loaded, in itself or in the module.
int MemoryFailures();

// Says so on standard error, which takes no memory.
void TellOutOfMemory();

// What the module answers with null for lack of memory alone.
template <class T>
T* Given(T* object) {
    if (!object) throw std::bad_alloc();
    return object;
}

}  // namespace fixtop
