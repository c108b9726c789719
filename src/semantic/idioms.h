// SPDX-License-Identifier: Apache-2.0
#pragma once

// The moves that all families of semantic functions are made of. Names are given to SeekPath as
// they stand, so they may be paths. Copies are released by their Ref.

#include <functional>
#include <initializer_list>
#include <string>

#include "diagnostics/memory_guard.h"
#include "fixtop/iterator.h"
#include "fixtop/ref.h"
#include "fixtop/semantic_function.h"
#include "fixtop/value.h"

namespace fixtop::semantic {

using Names = std::initializer_list<const char*>;

// Runs the body of a function that is exported: one that memory runs out in answers false or 0.
template <class Body>
auto Exported(Body body) {
    return memory::Or(decltype(body()){}, body);
}

Ref<FIIteratorBase> CopyOf(FIIteratorBase& it);
// What a Function works on: `it` itself when it is to move, a copy of it otherwise.
Ref<FIIteratorBase> CopyUnlessMove(FIIteratorBase& it, int move);

// Down the names in turn; on false `it` has kept the frames of those that were found.
bool SeekNames(FIIteratorBase& it, Names names);
// The attribute "value" of the present node.
FIValue ReadValue(FIIteratorBase& it);
// The value of the node below these names; NULL when a name is missing. `it` stays.
FIValue ReadValueBelow(FIIteratorBase& it, Names names);

// Numbers of a host may be of any size: what overflows wraps.
constexpr int WrappedSum(int a, int b) {
    return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
}

// The value of a child, and of an element of an array below; NULL when there is none. `it` stays.
FIValue ReadChildValue(FIIteratorBase& it, const char* name);
FIValue ReadElementValue(FIIteratorBase& it, const char* array, int index);
// The attribute "id" of the present node.
FIValue ReadId(FIIteratorBase& it);
// A number becomes its text; NULL stays NULL.
FIValue AsText(FIValue value);

// How many children the node below these names has; 0 when a name is missing. `it` stays.
int CountChildren(FIIteratorBase& it, Names names);

// The elements of a list. Each answers the index.
//
// The variable becomes "Elem" and the index: the name of the element in the host's array.
int SetElementName(FIIteratorBase& it, const char* variable, int index);
// The variable becomes the index, as an INT.
int SetElementIndex(FIIteratorBase& it, const char* variable, int index);
// `it` goes to the element of the named array.
int MoveToElement(FIIteratorBase& it, const char* array, int index);

// Whole lists: the count for kCountIndex, else the element.
//
// As many as the array below the names has; the variable becomes the name of the element.
int ArrayList(FIIteratorBase& it, int index, const char* variable, Names array);
// As many as the value of the named child, likewise.
int NumberList(FIIteratorBase& it, int index, const char* variable, const char* number);
// As many as the named array has; `it` goes to the element.
int MovingList(FIIteratorBase& it, int index, const char* array);

// Several children of a node may have one key, and others may stand between them.
//
// Down to the child that is number `index` of this key, which is a plain name; false, in place,
// when there are not so many.
bool SeekOfKey(FIIteratorBase& it, const char* key, int index);
// On to the next sibling of this key; false behind the last.
bool NextOfKey(FIIteratorBase& it, const char* key);
// On by so many siblings; false when there are not so many.
bool NextTimes(FIIteratorBase& it, int times);
// A list of as many as the array below these names has; the variable becomes the index.
int IndexList(FIIteratorBase& it, int index, const char* variable, Names names);

// Whether a child belongs to a list. It is called for every child that is passed, in both modes,
// and may leave variables there.
using ChildTest = std::function<bool(FIIteratorBase& child)>;

// To the first child that passes; false, in place, when none among the first `limit` does.
bool FindChild(FIIteratorBase& it, const ChildTest& accepts, int limit);
// Whether one of the first `limit` elements of an array has this text as its value. `it` stays.
bool HasElement(FIIteratorBase& it, const char* array, const std::string& text, int limit);

// A list of those children of a container that pass the test; `it` goes to the element. An index
// must be below an earlier count; beyond it `it` is left behind the last child. Takes kNextIndex.
int CountAcceptedChildren(FIIteratorBase& it, const char* container, const ChildTest& accepts,
                          int index);
// The same for the children whose attribute "type" is this word.
int CountTypedChildren(FIIteratorBase& it, const char* container, const char* type, int index);
// The attribute "type" of the present node as text; "" for NULL.
FIValue ReadType(FIIteratorBase& it);

// Steps to one element of a composition. Each is a Function but for the names.
//
// Element number `variable` of the array. Leaves no frame behind when it fails.
bool CompositionStep(FIIteratorBase& it, int move, const char* array, const char* variable);
// Element number `PhaseCmpCnt` of the row of the array that `PhaseName` names. A failed move leaves
// the frame of the array behind when that array exists.
bool PhaseComponentStep(FIIteratorBase& it, int move, const char* array);
// Element number `variable` of the array below the names. A failed move leaves a frame behind for
// every name that was found.
bool NestedStep(FIIteratorBase& it, int move, const char* variable, Names names);
// Element number `FlashPhaseCmpCnt` of "Comp Mole Frac" of a phase; fails like NestedStep.
bool FlashPhaseStep(FIIteratorBase& it, int move, const char* phase);

}  // namespace fixtop::semantic
