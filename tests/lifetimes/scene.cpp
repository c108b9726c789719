// SPDX-License-Identifier: Apache-2.0
#include "lifetimes/scene.h"

namespace fixtop::lifetimes {

namespace {

const char* const kViews[] = {"raw", "neutral", "on_node"};
const char* const kKinds[] = {"top",          "combined_top", "top_subscriber",   "solver",
                              "batch",        "node",         "iterator",         "copy",
                              "frozen",       "frozen_again", "attribute_cursor", "lent_cursor",
                              "child_cursor", "reference",    "subscriber"};
const char* const kPlaces[] = {"top",          "object",         "variable",    "element",
                               "component",    "fixed",          "basis",       "operation",
                               "inner_object", "inner_variable", "inner_fixed", "published"};
const char* const kEvents[] = {"none",
                               "deleted",
                               "sibling_deleted",
                               "holder_deleted",
                               "renamed",
                               "holder_renamed",
                               "renamed_and_name_taken",
                               "replaced",
                               "replaced_at_its_address",
                               "replaced_by_renamed",
                               "reordered",
                               "closed",
                               "closed_and_reopened",
                               "other_case_closed",
                               "client_leaves",
                               "client_leaves_twice",
                               "client_leaves_late",
                               "client_leaves_silently",
                               "host_out",
                               "host_out_and_gone",
                               "host_out_and_back"};
const char* const kMoments[] = {"between",  "in_loop",      "in_store",    "in_own_store",
                                "in_solve", "in_own_solve", "in_callback", "offline"};

template <class Value, std::size_t Count>
std::vector<Value> All(const char* const (&)[Count]) {
    std::vector<Value> all;
    for (std::size_t i = 0; i < Count; ++i) all.push_back(static_cast<Value>(i));
    return all;
}

// Which handle there is on which place.
bool KindCanBe(const Scene& scene) {
    if (IsOfCase(scene.kind)) return scene.view == View::raw && scene.place == Place::top;
    if (scene.kind == Kind::batch) return scene.view == View::raw && scene.place == Place::object;
    // These stand below something.
    const bool below = scene.kind == Kind::child_cursor || scene.kind == Kind::frozen ||
                       scene.kind == Kind::frozen_again;
    return !(below && scene.place == Place::top);
}

bool ViewCanBe(const Scene& scene) {
    if (scene.view == View::raw) return true;
    // The neutral view has no level of its own between an operation and its streams.
    if (scene.place == Place::inner_fixed) return false;
    if (scene.view == View::neutral) return true;
    const bool below = scene.kind == Kind::child_cursor || scene.kind == Kind::frozen ||
                       scene.kind == Kind::frozen_again;
    return scene.place != Place::top && !(IsOnRoot(scene) && below);
}

bool EventCanBe(const Scene& scene) {
    switch (scene.event) {
        case Event::replaced:
        case Event::replaced_at_its_address:
            // The host can't publish another variable.
            return scene.place != Place::published;
        case Event::holder_deleted:
        case Event::holder_renamed:
            // It is the operation's own deletion or renaming.
            return scene.place != Place::operation;
        default:
            return true;
    }
}

bool MomentCanBe(const Scene& scene) {
    if (scene.moment == Moment::offline) return scene.place != Place::published;
    // While a batch is open nothing is solved.
    if (scene.kind == Kind::batch && scene.moment == Moment::in_solve) return false;
    if (!IsOwn(scene.moment)) return true;
    const bool stores = scene.kind == Kind::node || scene.kind == Kind::iterator ||
                        scene.kind == Kind::copy || scene.kind == Kind::reference;
    return stores && IsStored(scene.place) &&
           (scene.moment == Moment::in_own_store || StartsSolve(scene.place));
}

}  // namespace

std::string Scene::Name() const {
    return std::string(NameOf(view)) + " " + NameOf(kind) + " on " +
           kPlaces[static_cast<int>(place)] + ", " + NameOf(event) + " " + NameOf(moment) +
           ", order " + std::to_string(order);
}

std::vector<View> AllViews() {
    return All<View>(kViews);
}
std::vector<Kind> AllKinds() {
    return All<Kind>(kKinds);
}
std::vector<Event> AllEvents() {
    return All<Event>(kEvents);
}
std::vector<Moment> AllMoments() {
    return All<Moment>(kMoments);
}
std::vector<Place> AllPlaces() {
    return All<Place>(kPlaces);
}

const char* NameOf(View view) {
    return kViews[static_cast<int>(view)];
}
const char* NameOf(Kind kind) {
    return kKinds[static_cast<int>(kind)];
}
const char* NameOf(Event event) {
    return kEvents[static_cast<int>(event)];
}
const char* NameOf(Moment moment) {
    return kMoments[static_cast<int>(moment)];
}

bool IsOfCase(Kind kind) {
    return kind <= Kind::solver;
}

bool IsOwn(Moment moment) {
    return moment == Moment::in_own_store || moment == Moment::in_own_solve;
}

bool IsStored(Place place) {
    return place == Place::component || place == Place::published || StartsSolve(place);
}

bool StartsSolve(Place place) {
    return place == Place::variable || place == Place::element || place == Place::basis ||
           place == Place::inner_variable;
}

bool IsOnRoot(const Scene& scene) {
    switch (scene.view) {
        case View::raw:
            return false;
        case View::neutral:
            return scene.place == Place::top;
        case View::on_node:
            return scene.place == Place::object || scene.place == Place::fixed ||
                   scene.place == Place::operation;
    }
    return false;
}

bool CanBe(const Scene& scene) {
    return KindCanBe(scene) && ViewCanBe(scene) && EventCanBe(scene) && MomentCanBe(scene);
}

}  // namespace fixtop::lifetimes
