// SPDX-License-Identifier: Apache-2.0
#pragma once

// Scenes: what a client holds, what the handle stands on, what happens to it, when, in which view.
// The harness runs each combination of them that can be.

#include <string>
#include <vector>

namespace fixtop::lifetimes {

enum class View { raw, neutral, on_node };

enum class Kind {
    top,
    combined_top,
    top_subscriber,
    solver,
    batch,
    node,
    iterator,
    copy,
    frozen,
    frozen_again,  // a second time, after a move
    attribute_cursor,
    lent_cursor,  // an attribute cursor with the variables of an iterator that has gone
    child_cursor,
    reference,
    subscriber,
};

enum class Place {
    top,  // or the root of the neutral view
    object,
    variable,
    element,    // of an array
    component,  // of a composition
    fixed,
    basis,
    operation,  // a template operation
    inner_object,
    inner_variable,
    inner_fixed,
    published,
};

enum class Event {
    none,
    deleted,
    sibling_deleted,
    holder_deleted,
    renamed,
    holder_renamed,
    renamed_and_name_taken,
    replaced,
    replaced_at_its_address,
    replaced_by_renamed,
    reordered,
    closed,
    closed_and_reopened,
    other_case_closed,
    client_leaves,
    client_leaves_twice,
    client_leaves_late,
    client_leaves_silently,
    host_out,
    host_out_and_gone,
    host_out_and_back,
};

enum class Moment {
    between,
    in_loop,
    in_store,
    in_own_store,
    in_solve,
    in_own_solve,
    in_callback,
    offline,
};

struct Scene {
    View view = View::raw;
    Kind kind = Kind::iterator;
    Event event = Event::none;
    Moment moment = Moment::between;
    Place place = Place::object;
    int order = 0;  // of what is done after; see Ops in rules.h

    // "raw iterator on variable, deleted in_solve, order 3"
    std::string Name() const;
};

// All values, in the order of the types.
std::vector<View> AllViews();
std::vector<Kind> AllKinds();
std::vector<Event> AllEvents();
std::vector<Moment> AllMoments();
std::vector<Place> AllPlaces();

const char* NameOf(View view);
const char* NameOf(Kind kind);
const char* NameOf(Event event);
const char* NameOf(Moment moment);

// Handles on the root of a neutral view, which all handles of the client share.
bool IsOnRoot(const Scene& scene);
// Handles on the case as a whole.
bool IsOfCase(Kind kind);
// Whether the store of the scene's own handle is what the event happens in.
bool IsOwn(Moment moment);
// Whether a store into the place ends in a store into the host, and starts a solve there.
bool IsStored(Place place);
bool StartsSolve(Place place);
// Whether there is such a scene.
bool CanBe(const Scene& scene);

}  // namespace fixtop::lifetimes
