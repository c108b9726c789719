// SPDX-License-Identifier: Apache-2.0
#pragma once

// The tables of docs/lifetimes.md as functions: what becomes of a place by an event, and what a
// handle on it answers then.

#include <string>
#include <vector>

#include "lifetimes/scene.h"

namespace fixtop::lifetimes {

enum class Fate { live, deleted, closed };

// One event, one rule.
Fate FateOf(Event event, Place place);
// Of the list in which the place stands, and of the node above.
Fate FateOfParent(Event event, Place place);

// What is done with a handle, each answered by one text.
enum class Op {
    read,
    model_rows,  // those that the neutral model answers itself
    name,
    path,
    container,
    down,
    next,
    prev,
    up,
    store,
    self,   // compared with itself
    twin,   // compared with a handle that was made on the same place
    other,  // compared with a handle on something else in its list
    fresh,  // compared with a handle by a fresh path
    copy_name,
    copy_path,
    copy_self,  // the copy compared with its original
    copy_read,
    key,
    entry,
    at_end,
    seek_first,
    seek_next,
    seek_prev,
    seek_name,
    run,
    subscribe,
    elsewhere,    // a store into another object: whether it starts a solve
    told,         // how often the end was told
    told_change,  // whether a change was told since this was asked last
    release,      // and how often the end was told then
    rest,         // everything else, of which nothing is expected but that it ends
};

const char* NameOf(Op op);
// How many orders there are in which a kind of handle is used after the event, and one of them. An
// order begins with another operation each and goes on with all others; the last but one does the
// rest of what a handle can do, the last releases it at once.
int OrdersOf(View view, Kind kind);
std::vector<Op> OpsInOrder(View view, Kind kind, int order);

enum class Answer {
    right,  // what a fresh path answers
    node_deleted,
    guarded,  // the first time "Node invalid" after a deletion, else "Node deleted"
    null,
    no,
    yes,
    same,
    apart,
    before,    // what it was before the event
    parent,    // the node above, as it is now
    at_end,    // a seek that failed and stands at the end
    at_first,  // a seek that failed and stands on the first element, if there is one
    empty,     // the shared empty entry, in the neutral views none
    solved,
    open,  // whatever it answers
};

Answer AnswerOf(const Scene& scene, Op op);

}  // namespace fixtop::lifetimes
