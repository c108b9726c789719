// SPDX-License-Identifier: Apache-2.0
// What a selection holds: items come, go and are told. selection_file.cpp has its files,
// selection_values.cpp its values, selection_states.cpp what became of it.

#include "fixtop/client/selection.h"

#include <algorithm>

#include "case_state.h"
#include "fixtop/client/pattern.h"
#include "selection_items.h"
#include "texts.h"

namespace fixtop::client {

namespace {

constexpr char kUnsavable[] =
    "its path can't be kept in a file: a name in it has a control character, or looks like an "
    "entity of XML";

constexpr char kElsewhere[] = "is no node of the tree that the selection is of";
constexpr char kNoUnitKept[] = "is not shown in a unit here, so that none can be kept";

void SkipTo(FICollectionIteratorBase& at, int item) {
    for (; item > 0 && at.IsValid(); --item) at.Next();
}

bool ComesBack(const Node& node) {
    FIValue path;
    node.Iterator().GetPath(path);
    if (IsPlain(path.ToText())) return true;
    const Ref<FICollectionBase> saved = NewCollection();
    FIValue text;
    const auto write = [&] {
        if (!saved->Add(node.Iterator())) return false;
        saved->ToXml(text);
        return true;
    };
    if (!Whole(write)) return false;
    const Ref<FICollectionBase> read = NewCollection();
    const std::string xml = text.ToText();
    if (!Whole([&] { return read->FromXml(xml.c_str()); }) || read->Count() != 1) return false;
    return PathOf(*FirstOf(*read)) == PathOf(*FirstOf(*saved));
}

std::string TypeOf(FICollectionIteratorBase& item) {
    FIValue type;
    item.GetAttribute(FIValue("type"), type);
    return type.ToText();
}

// A node is called as all are in a path, so that no name leads to it.
bool HasStepOfAnyName(FICollectionIteratorBase& item) {
    const std::vector<std::string> steps = StepsOf(item);
    return std::find(steps.begin(), steps.end(), "*") != steps.end();
}

// Its path with places written as such: in a file alone nothing tells them from names.
std::string PathByPlaces(FICollectionIteratorBase& item) {
    std::string path;
    for (const std::string& step : StepsOf(item)) {
        const bool is_place = !step.empty() && step.find_first_not_of("0123456789") == step.npos;
        path =
            JoinPath(path, is_place ? "*#" + std::to_string(std::stoul(step.substr(0, 9))) : step);
    }
    return path;
}

Node TopOf(const Node& node) {
    auto at = Ref<FIIteratorBase>::Adopt(Given(node.Iterator().Copy()));
    while (at->Depth() > 0) at->Up();
    return Node(node.OpenCase(), std::move(at));
}

bool IsSamePath(const Pattern& wanted, const std::string& path) {
    try {
        return wanted.IsSame(Pattern(path));
    } catch (const PathError&) {
        return false;
    }
}

using TextOfItem = std::string (*)(FICollectionIteratorBase& item);
std::vector<std::string> OfEach(FICollectionBase& collection, TextOfItem text) {
    std::vector<std::string> texts;
    texts.reserve(static_cast<std::size_t>(collection.Count()));
    for (const auto at = FirstOf(collection); at->IsValid(); at->Next()) texts.push_back(text(*at));
    return texts;
}

}  // namespace

FICollectionBase& ByPresentNames(FICollectionBase& collection) {
    collection.FollowNames();
    return collection;
}

bool IsPlain(const std::string& path) {
    return std::all_of(path.begin(), path.end(),
                       [](unsigned char c) { return c >= ' ' && c < 0x7f && c != '&'; });
}

Ref<FICollectionBase> NewCollection() {
    return Ref<FICollectionBase>::Adopt(Given(FixtopMakeCollection()));
}

Ref<FICollectionIteratorBase> FirstOf(FICollectionBase& collection) {
    auto item = Ref<FICollectionIteratorBase>::Adopt(Given(collection.MakeIterator()));
    item->First();
    return item;
}

std::string PathOf(FICollectionIteratorBase& item) {
    FIValue path;
    item.GetPath(path);
    if (HasStepOfAnyName(item)) {
        const auto node = Ref<FIReferenceBase>::Adopt(item.GetNode());
        if (node && !IsGoneText(TypeOf(item))) FixtopPathTo(node->GetIterator(), path);
    }
    return path.ToText();
}

std::vector<std::string> StepsOf(FICollectionIteratorBase& item) {
    std::vector<std::string> steps;
    FIValue step;
    for (int level = 0; level < item.Depth(); ++level) {
        item.GetStep(level, step);
        steps.push_back(step.ToText());
    }
    return steps;
}

std::string UnitOf(FICollectionIteratorBase& item) {
    FIValue unit, spec_unit;
    item.GetUnits(unit, spec_unit);
    return unit.ToText();
}

bool LacksUnit(FICollectionIteratorBase& item) {
    const std::string kept = UnitOf(item);
    if (kept.empty() || WayOf(item) == FICollectionIteratorBase::kNoWay) return false;
    FIValue shown;
    item.GetAttribute(FIValue("uom"), shown);
    return shown.ToText() != kept;
}

int WayOf(FICollectionIteratorBase& item) {
    return IsGoneText(TypeOf(item)) ? FICollectionIteratorBase::kNoWay : item.GetWay();
}

bool IsKnown(FICollectionIteratorBase& item) {
    return item.GetWay() != FICollectionIteratorBase::kByLikelyPlace;
}

Selection::Selection(const Node& root) : root_(TopOf(root)), collection_(NewCollection()) {}

std::size_t Selection::Size() const {
    return static_cast<std::size_t>(collection_->Count());
}

Ref<FICollectionIteratorBase> Selection::ItemAt(std::size_t item) const {
    auto at = FirstOf(*collection_);
    SkipTo(*at, static_cast<int>(std::min<std::size_t>(item, Size())));
    if (!at->IsValid()) throw Error("a selection has no item of this number");
    return at;
}

bool Selection::Add(const Node& node, const std::string& unit) {
    if (!root_ || !(TopOf(node) == *root_)) throw Refused(node.Path(), kElsewhere);
    if (!ComesBack(node)) throw Refused(node.Path(), kUnsavable);
    const std::string kept = unit.empty() ? "" : node.ShowIn(unit);
    // One that gives way to a new name is not to be taken for the one that comes.
    const int before = ByPresentNames(*collection_).Count();
    FICollectionElement* const item = Whole([&] { return collection_->Add(node.Iterator()); });
    if (!item) throw Refused(node.Path(), kElsewhere);
    const bool is_new = collection_->Count() != before;
    if (kept.empty()) return is_new;
    const auto at = FirstOf(*collection_);
    if (is_new) {
        at->Last();
    } else {
        SkipTo(*at, collection_->IndexOf(item));
    }
    if (UnitOf(*at) == kept) return is_new;
    FIValue refused;
    at->SetAttribute(FIValue("uom"), FIValue(kept.c_str()), 0, refused);
    if (refused.IsNull() && UnitOf(*at) != kept) refused.SetText(kNoUnitKept);
    if (refused.IsNull()) return is_new;
    if (is_new) collection_->Remove(item);
    throw Refused(node.Path(), refused.ToText());
}

bool Selection::Remove(const std::string& path) {
    const Pattern wanted(path);
    const auto remove = [&](auto is_wanted) {
        const auto at = FirstOf(ByPresentNames(*collection_));
        while (at->IsValid() && !is_wanted(*at)) at->Next();
        return at->IsValid() && collection_->Remove(at->Item());
    };
    return remove([&](auto& item) {
               const std::string found = PathOf(item);
               return found == path || IsSamePath(wanted, found);
           }) ||
           remove([&](auto& item) { return IsSamePath(wanted, PathByPlaces(item)); });
}

std::string Selection::Path(std::size_t item) const {
    ByPresentNames(*collection_);
    return PathOf(*ItemAt(item));
}

std::string Selection::Unit(std::size_t item) const {
    return UnitOf(*ItemAt(item));
}

std::vector<std::string> Selection::Paths() const {
    return OfEach(ByPresentNames(*collection_), PathOf);
}

std::vector<std::string> Selection::Units() const {
    return OfEach(*collection_, UnitOf);
}

std::optional<Node> Selection::NodeOf(std::size_t item) const {
    return NodeAt(*ItemAt(item));
}

void Selection::ForEachNode(const NodeVisitor& visit) const {
    for (const auto at = FirstOf(ByPresentNames(*collection_)); at->IsValid(); at->Next()) {
        visit(PathOf(*at), NodeAt(*at));
    }
}

std::optional<Node> Selection::NodeAt(FICollectionIteratorBase& item) const {
    if (!root_ || !IsKnown(item) || WayOf(item) == FICollectionIteratorBase::kNoWay) {
        return std::nullopt;
    }
    const auto node = Ref<FIReferenceBase>::Adopt(item.GetNode());
    if (!node) return std::nullopt;
    return Node(root_->OpenCase(), Ref<FIIteratorBase>::Adopt(Given(node->Copy())));
}

}  // namespace fixtop::client
