// SPDX-License-Identifier: Apache-2.0
#pragma once

// What a map file's functions and their callers owe each other. A semantic function is behind a
// name in a map file and says what a path can't: it counts the host's arrays, picks a node, turns
// the host's words into class names. It sees nothing but an iterator on the raw node, and answers
// by moving it and by setting iterator variables, which paths read back as `%Name`.
//
// Nothing is thrown and nothing reported: a missing child is a count of 0, a false, or a variable
// that stays unset. NULL reads as the number 0. No state is kept between calls.

#include <span>
#include <string_view>
#include <variant>

#include "fixtop/iterator.h"

namespace fixtop {

// Steps to one node. With `move` 0 it only asks whether the target exists, and `it` stays where it
// stands; any other `move` leaves `it` on the target. After a false with `move`, `it` may have been
// left some frames deeper or higher: the caller gives the position up.
using SemanticFunction = bool (*)(FIIteratorBase* it, int move);

// A list. Index -1 answers the count and leaves `it` in place; of the count callers keep the low
// eight bits. Index 0 and up, each below that count, selects an element by moving `it` or by
// setting variables, and answers the index. It may leave `it` deeper, never shallower: callers pop.
// `subclass` is the caller's, NULL before the call; it may receive the class name of the element.
using ArrayFunction = int (*)(FIIteratorBase* it, FIValue* subclass, int index);

// The index that asks for the count.
inline constexpr int kCountIndex = -1;
// Of a list that takes it: moves `it` from the element on which the list left it to the one behind
// that, so that a walk over a long list need not count from its start for each. Answers the index
// again, and -1 where there is none; `it` is behind the last child then.
inline constexpr int kNextIndex = -2;

// Variables of an element that cost more to find out than all the rest and that few readers ask
// for. Who walks the list may call `select` for an element in place of the list's own function,
// which sets the other variables alone, and `set` when one of these is first asked for: on an
// iterator that stands where the list was called. Who calls the list's function has them all.
struct LateVariables {
    std::span<const char* const> names;
    ArrayFunction select;
    void (*set)(FIIteratorBase* it, int index);
};

// Makes the top of the application's tree, counted for the caller; null when there is none.
using TopNodeFunction = FIEntry* (*)();

// A row of a table from which maps take functions. A map says by its form which kind it calls, so
// the kind goes with the name.
struct NamedFunction {
    std::string_view name;
    std::variant<SemanticFunction, ArrayFunction, TopNodeFunction> function;
    // A list that takes kNextIndex.
    bool steps_on = false;
    // A step that moves only after it was asked in the same place.
    bool asked_first = false;
    // Of a list that has such; null for none.
    const LateVariables* late = nullptr;
};

}  // namespace fixtop
