// SPDX-License-Identifier: Apache-2.0
#pragma once

// Calls of semantic functions. Every test of this folder makes its calls through here, so that what
// a function owes its callers about the place of the iterator is checked each time: the depth
// before and after, of asking and of moving, of counts and of elements, whether they succeed or
// fail.

#include <string>
#include <vector>

#include "fixtop/semantic_function.h"

namespace fixtop {

// A step. One that is asked stays where it is. One that moves is asked first, on a copy, and has to
// answer the same; it goes as many frames as steps of its kind do.
bool Call(SemanticFunction function, FIIteratorBase* it, int move);

// A list. The count stays where it is; an element is at or below the place of the list, as many
// frames down as elements of its kind are.
int Call(ArrayFunction function, FIIteratorBase* it, FIValue* subclass, int index);

// Every function with each outcome that no call had so far: "CTHeaterVF failed to move".
std::vector<std::string> OutcomesNotSeen();

}  // namespace fixtop
