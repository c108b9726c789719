// SPDX-License-Identifier: Apache-2.0
#pragma once

// The definitions of a class library as a tree that can be walked like any other:
//
//     Dictionary
//         Classes        one node a class: superclasses
//             ...        one node an attribute, inherited ones first: type, quantity, array, keys,
//             owner
//         Enumerations   one node an enumeration: options, closed
//
// Lists are texts, one element a line. The tree is a copy; the library is not needed afterwards.

#include "fixtop/entry.h"
#include "fixtop/ref.h"

namespace fixtop {

class CCDMClassLibrary;

Ref<FIEntry> MakeDictionary(const CCDMClassLibrary& library);

}  // namespace fixtop
