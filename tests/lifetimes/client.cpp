#include "lifetimes/client.h"

#include "lifetimes/scene_files.h"

namespace lifetimes {

namespace {

using Iterator = Ref<FIIteratorBase>;

const Path kSheet = {{"appModel"}, {"FlowSheetObjects"}};
const char kPublished[] = "Published Variables";

Path Below(Path path, std::initializer_list<Step> steps) {
    path.insert(path.end(), steps);
    return path;
}

Path RawPath(Place place, Plant& plant) {
    const Path streams = Below(kSheet, {{"Streams"}});
    const Path inner = Below(kSheet, {{"UnitOps"}, {plant.OperationName()}, {"Streams"}});
    const Step target = {place == Place::top ? "" : plant.TargetName()};
    switch (place) {
        case Place::top:
            return {};
        case Place::object:
            return Below(streams, {target});
        case Place::variable:
            return Below(streams, {target, {"Temperature"}});
        case Place::element:
            return Below(streams, {target, {"Profile"}, {"Elem1"}});
        case Place::component:
            return Below(streams, {target, {"Comp Mole Frac"}, {"Ethane"}});
        case Place::fixed:
            return streams;
        case Place::basis:
            return {{"appModel"}, {"Basis"}, {"Package"}, {"Tuned"}};
        case Place::operation:
            return Below(kSheet, {{"UnitOps"}, target});
        case Place::inner_object:
            return Below(inner, {target});
        case Place::inner_variable:
            return Below(inner, {target, {"Temperature"}});
        case Place::inner_fixed:
            return inner;
        case Place::published:
            return {{kPublished}, target};
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
    const Step block = {"Block", place == Place::top ? 0 : plant.OperationIndex()};
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
            return {{"Flowsheet"}, block};
        default:
            break;
    }
    const Step stream = {"Stream", plant.TargetIndex()};
    const bool inner = place == Place::inner_object || place == Place::inner_variable;
    Path path = inner ? Path{{"Flowsheet"}, block, stream} : Path{{"Flowsheet"}, stream};
    for (const Step& step : WithinObject(place)) path.push_back(step);
    return path;
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

std::string TextOf(const Path& path) {
    std::string text;
    for (const Step& step : path) {
        text += (text.empty() ? "\"" : ".\"") + step.name + "\"";
        if (step.number > 0) text += "#" + std::to_string(step.number);
    }
    return text;
}

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
        const auto it = Iterator::Adopt(FixtopMakeIterator(top_.Get(), false));
        if (it->SeekPath(FIValue(TextOf(anchor.path).c_str()))) {
            root_ = Ref<FIEntry>::Adopt(
                FixtopOpenModelOnNode(it.Get(), anchor.class_name, &SceneFiles()));
        }
    }
}

Iterator Client::At(const Path& path) const {
    auto it = Iterator::Adopt(FixtopMakeIterator(root_.Get(), false));
    if (path.empty()) return it;
    return it->SeekPath(FIValue(TextOf(path).c_str())) ? it : Iterator();
}

// The entries above are let go on the way.
Ref<FIEntry> Client::EntryAt(const Path& path) const {
    Ref<FIEntry> entry = root_;
    for (const Step& step : path) {
        const auto context = Ref<FIContext>::Adopt(entry->GetContext());
        const auto cursor = Ref<FICursorBase>::Adopt(context->MakeCursor(kChildCursor));
        if (!cursor->SeekName(kFromFirst, step.name.c_str())) return {};
        if (step.number > 0 && !cursor->Seek(kFromPresent, step.number)) return {};
        entry = Ref<FIEntry>::Adopt(cursor->GetEntry());
    }
    return entry;
}

Access Client::AccessOf() const {
    Access access;
    const bool has_value = IsStored(place_);
    access.row = has_value ? "value" : place_ == Place::top ? "server" : "status";
    access.is_fraction = place_ == Place::component;
    return access;
}

std::unique_ptr<Subject> Client::Make(Kind kind) {
    if (IsOfCase(kind)) return MakeOfCase(kind);
    if (!root_) return nullptr;
    switch (view_) {
        case View::raw:
            return MakeAt(kind, RawPath(place_, plant_));
        case View::neutral:
            return MakeAt(kind, NeutralPath(place_, plant_));
        case View::on_node:
            return MakeAt(kind, AnchorOf(place_, plant_).below);
    }
    return nullptr;
}

std::unique_ptr<Subject> Client::MakeOther(Kind kind) {
    if (IsOfCase(kind) || kind == Kind::batch) return nullptr;
    if (view_ == View::raw) return MakeAt(kind, Below(kSheet, {{"UnitOps"}, {"T-0"}}));
    if (view_ == View::neutral) return MakeAt(kind, {{"Basis"}, {"Remark"}});
    return nullptr;
}

Iterator Client::Bystander() {
    auto it = Iterator::Adopt(FixtopMakeIterator(top_.Get(), false));
    const Path path = Below(kSheet, {{"Streams"}, {"S4"}, {"Temperature"}});
    return it->SeekPath(FIValue(TextOf(path).c_str())) ? it : Iterator();
}

std::unique_ptr<Subject> Client::MakeOfCase(Kind kind) {
    const Access access = {"status", false};
    switch (kind) {
        case Kind::top:
            return MakeTopSubject(top_, {"server", false});
        case Kind::top_subscriber:
            return MakeTopSubscriberSubject(top_);
        case Kind::combined_top:
            return MakeTopSubject(Ref<FIEntry>::Adopt(GetCombinedEntry(nullptr)), access);
        default:
            return MakeSolverSubject(std::unique_ptr<FISolver>(GetTopHovexSolver(nullptr, 1)));
    }
}

std::unique_ptr<Subject> Client::MakeAt(Kind kind, const Path& path) {
    const Access access = AccessOf();
    if (kind == Kind::node || kind == Kind::batch) {
        const Ref<FIEntry> entry = EntryAt(path);
        if (!entry) return nullptr;
        return kind == Kind::node ? MakeNodeSubject(entry, access)
                                  : MakeBatchSubject(entry, access);
    }
    if (kind == Kind::attribute_cursor || kind == Kind::lent_cursor || kind == Kind::child_cursor) {
        return MakeCursor(kind, path);
    }
    Iterator it = At(path);
    if (!it) return nullptr;
    if (kind == Kind::reference) return MakeReferenceSubject(it, access);
    if (kind == Kind::subscriber) return MakeSubscriberSubject(it, access);
    if (kind == Kind::copy) it = Iterator::Adopt(it->Copy());
    const bool frozen = kind == Kind::frozen || kind == Kind::frozen_again;
    if (kind == Kind::frozen_again) {
        it->Freeze();
        it->Thaw();
        // Away and back, so that there is something new to save.
        it->Up();
        it->SeekPath(FIValue(TextOf({path.back()}).c_str()));
    }
    if (frozen) it->Freeze();
    return MakeIteratorSubject(it, access, frozen);
}

std::unique_ptr<Subject> Client::MakeCursor(Kind kind, const Path& path) {
    if (kind == Kind::child_cursor) {
        const Ref<FIEntry> parent = EntryAt(Path(path.begin(), path.end() - 1));
        if (!parent) return nullptr;
        const auto context = Ref<FIContext>::Adopt(parent->GetContext());
        auto cursor = Ref<FICursorBase>::Adopt(context->MakeCursor(kChildCursor));
        if (!cursor->SeekName(kFromFirst, path.back().name.c_str())) return nullptr;
        if (path.back().number > 0) cursor->Seek(kFromPresent, path.back().number);
        return MakeChildCursorSubject(cursor, AccessOf());
    }
    Ref<FIAttributeCursorBase> cursor;
    if (kind == Kind::attribute_cursor) {
        const Ref<FIEntry> entry = EntryAt(path);
        if (!entry) return nullptr;
        const auto source = Ref<FIAttributeSource>::Adopt(entry->GetAttributeSource());
        cursor = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    } else {
        const Iterator it = At(path);
        if (!it) return nullptr;
        const auto copy = Iterator::Adopt(it->Copy());
        const auto source = Ref<FIAttributeSource>::Adopt(copy->GetAttributeSource());
        cursor = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
        cursor->SetVarSet(copy->GetVarSet());
    }
    cursor->SeekName(kFromFirst, AccessOf().row);
    return MakeAttributeCursorSubject(cursor);
}

}  // namespace lifetimes
