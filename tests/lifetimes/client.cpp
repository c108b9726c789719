// SPDX-License-Identifier: Apache-2.0
#include "lifetimes/client.h"

#include "lifetimes/scene_files.h"

namespace fixtop::lifetimes {

namespace {

using Iterator = Ref<FIIteratorBase>;

const Path kSheet = {{"appModel"}, {"FlowSheetObjects"}};
const char kPublished[] = "Published Variables";

Path Below(Path path, std::initializer_list<Step> steps) {
    path.insert(path.end(), steps);
    return path;
}

// The names are asked for of what lives alone.
Path RawPath(Place place, Plant& plant) {
    const auto object = [&](const char* list) {
        return Below(kSheet, {{list}, {plant.TargetName()}});
    };
    const auto inner = [&] {
        return Below(kSheet, {{"UnitOps"}, {plant.OperationName()}, {"Streams"}});
    };
    switch (place) {
        case Place::top:
            return {};
        case Place::object:
            return object("Streams");
        case Place::variable:
            return Below(object("Streams"), {{"Temperature"}});
        case Place::element:
            return Below(object("Streams"), {{"Profile"}, {"Elem1"}});
        case Place::component:
            return Below(object("Streams"), {{"Comp Mole Frac"}, {"Ethane"}});
        case Place::fixed:
            return Below(kSheet, {{"Streams"}});
        case Place::basis:
            return {{"appModel"}, {"Basis"}, {"Package"}, {"Tuned"}};
        case Place::operation:
            return object("UnitOps");
        case Place::inner_object:
            return Below(inner(), {{plant.TargetName()}});
        case Place::inner_variable:
            return Below(inner(), {{plant.TargetName()}, {"Temperature"}});
        case Place::inner_fixed:
            return inner();
        case Place::published:
            return {{kPublished}, {plant.TargetName()}};
    }
    return {};
}

// Below the object itself, in both neutral views.
Path WithinObject(Place place) {
    switch (place) {
        case Place::variable:
        case Place::inner_variable:
            return {{"Temperature"}};
        case Place::element:
            return {{"Profile", 1}};
        case Place::component:
            return {{"Component", 1}, {"MoleFraction"}};
        default:
            return {};
    }
}

Path NeutralPath(Place place, Plant& plant) {
    switch (place) {
        case Place::top:
            return {};
        case Place::fixed:
            return {{"Flowsheet"}};
        case Place::basis:
            return {{"Basis"}, {"Tuned"}};
        case Place::published:
            return {{"Connection"}, {"Signal", plant.TargetIndex()}};
        case Place::operation:
            return {{"Flowsheet"}, {"Block", plant.OperationIndex()}};
        default:
            break;
    }
    const Step stream = {"Stream", plant.TargetIndex()};
    const bool inner = place == Place::inner_object || place == Place::inner_variable;
    Path path = {{"Flowsheet"}};
    if (inner) path.push_back({"Block", plant.OperationIndex()});
    path.push_back(stream);
    for (const Step& step : WithinObject(place)) path.push_back(step);
    return path;
}

// Another element of the list that the place stands in.
Step RawSibling(Place place) {
    switch (place) {
        case Place::variable:
        case Place::inner_variable:
            return {"Notes"};
        case Place::element:
            return {"Elem2"};
        case Place::component:
            return {"Methane"};
        case Place::fixed:
        case Place::inner_fixed:
            return {"UnitOps"};
        case Place::basis:
            return {"Remark"};
        case Place::operation:
            return {"T-2"};
        case Place::inner_object:
            return {"I3"};
        case Place::published:
            return {"P3"};
        default:
            return {"S3"};
    }
}

Step NeutralSibling(Place place, const Step& step) {
    switch (place) {
        case Place::variable:
        case Place::inner_variable:
        case Place::basis:
            return {"Remark"};
        case Place::component:
            return {"ComponentName"};
        case Place::fixed:
            return {"Basis"};
        default:
            return {step.name, step.number + 1};
    }
}

// Where a view of one node begins, as what, and the path below.
struct Anchor {
    Path path;
    const char* class_name;
    Path below;
};

Anchor AnchorOf(Place place, Plant& plant) {
    switch (place) {
        case Place::fixed:
            return {kSheet, "SceneFlowsheet", {}};
        case Place::basis:
            return {{{"appModel"}, {"Basis"}, {"Package"}}, "SceneBasis", {{"Tuned"}}};
        case Place::published:
            return {{{kPublished}}, "SceneConnection", {{"Signal", plant.TargetIndex()}}};
        case Place::operation:
            return {RawPath(place, plant), "SceneFlowsheet", {}};
        case Place::inner_object:
            return {Below(kSheet, {{"UnitOps"}, {plant.OperationName()}}),
                    "SceneFlowsheet",
                    {{"Stream", plant.TargetIndex()}}};
        case Place::inner_variable:
            return {RawPath(Place::inner_object, plant), "SceneStream", WithinObject(place)};
        default:
            return {RawPath(Place::object, plant), "SceneStream", WithinObject(place)};
    }
}

}  // namespace

Client::Client(View view, Place place, Plant& plant, bool listens)
    : view_(view), place_(place), plant_(plant) {
    FixtopNotify notify = nullptr;
    top_ = Ref<FIEntry>::Adopt(GetTopFIEntry(listens ? &notify : nullptr));
    if (listens && notify) SetTopNotify(notify, nullptr);
    if (view == View::raw) root_ = top_;
    if (view == View::neutral) {
        root_ = Ref<FIEntry>::Adopt(FixtopOpenModel(top_.Get(), &SceneFiles()));
    }
    if (view == View::on_node) {
        const Anchor anchor = AnchorOf(place, plant);
        if (const Iterator it = IteratorAt(top_, anchor.path)) {
            root_ = Ref<FIEntry>::Adopt(
                FixtopOpenModelOnNode(it.Get(), anchor.class_name, &SceneFiles()));
        }
    }
}

// Stored are numbers above this; fractions are below 1.
double Client::BaseOf() const {
    return place_ == Place::component ? 0 : 500;
}

// The root of a neutral view has rows of the model alone, on which a cursor can stand.
const char* Client::RowOf(Kind kind) const {
    const bool has_cursor = kind == Kind::attribute_cursor || kind == Kind::lent_cursor;
    if (has_cursor && IsOnRoot({view_, kind, Event::none, Moment::between, place_})) return "id";
    return IsStored(place_) ? "value" : place_ == Place::top ? "server" : "status";
}

Path Client::PresentPath() const {
    switch (view_) {
        case View::raw:
            return RawPath(place_, plant_);
        case View::neutral:
            return NeutralPath(place_, plant_);
        case View::on_node:
            return AnchorOf(place_, plant_).below;
    }
    return {};
}

std::unique_ptr<Subject> Client::Make(Kind kind) {
    if (IsOfCase(kind)) return MakeOfCase(kind);
    return root_ ? MakeSubject(kind, root_, PresentPath(), {RowOf(kind), BaseOf()}) : nullptr;
}

std::unique_ptr<Subject> Client::MakeOther(Kind kind) {
    if (IsOfCase(kind) || kind == Kind::batch) return nullptr;
    Path path = PresentPath();
    if (kind == Kind::attribute_cursor || kind == Kind::lent_cursor) {
        return MakeSubject(kind, root_, path, {"type", 0});
    }
    if (path.empty()) return nullptr;
    path.back() = view_ == View::raw ? RawSibling(place_) : NeutralSibling(place_, path.back());
    return MakeSubject(kind, root_, path, {RowOf(kind), BaseOf()});
}

Iterator Client::Bystander() {
    return IteratorAt(top_, Below(kSheet, {{"Streams"}, {"S4"}, {"Temperature"}}));
}

std::unique_ptr<Subject> Client::MakeOfCase(Kind kind) {
    const Access access = {"status", 0};
    switch (kind) {
        case Kind::top:
            return MakeTopSubject(top_, {"server", 0});
        case Kind::top_subscriber:
            return MakeTopSubscriberSubject(top_);
        case Kind::combined_top:
            return MakeTopSubject(Ref<FIEntry>::Adopt(GetCombinedEntry(nullptr)), access);
        default:
            return MakeSolverSubject(std::unique_ptr<FISolver>(GetTopHovexSolver(nullptr, 1)));
    }
}

}  // namespace fixtop::lifetimes
