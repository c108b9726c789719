// SPDX-License-Identifier: Apache-2.0
#include "collection/node_search.h"

#include <algorithm>

#include "collection/step_ids.h"

namespace fixtop {

namespace {

using Sought = FICollectionElement::Sought;

}  // namespace

NodeSearch::~NodeSearch() {
    if (root_) Forget(*root_);
}

// What was not found is not wanted any more either.
void NodeSearch::Forget(FICollectionElement& step) {
    if (!step.is_wanted) return;
    step.is_wanted = false;
    for (const auto& child : step.Steps()) Forget(*child);
}

void NodeSearch::Want(FICollectionElement& item) {
    for (auto* each = &item; each && !each->is_wanted; each = each->Parent()) {
        each->is_wanted = true;
        if (!each->Parent()) root_ = each;
    }
}

void NodeSearch::Run(FIIterator& top) {
    if (root_) Visit(*root_, top);
}

void NodeSearch::Visit(FICollectionElement& step, FIIterator& node) {
    if (step.IsItem() && !step.node) found_(step, node);
    // Steps of one name stand together, and all are sought in one walk.
    std::string walked;
    for (const auto& child : step.Steps()) {
        if (child->is_wanted) VisitByName(*child, node);
        if (child->is_wanted) {
            std::string name = NameOfKeyed(child->Id());
            if (!name.empty() && name != walked) VisitKeyed(step, name, node);
            walked = std::move(name);
        }
        if (child->is_wanted) VisitByPlace(*child, node);
        Forget(*child);
    }
    step.is_wanted = false;
}

void NodeSearch::VisitByName(FICollectionElement& step, FIIterator& node) {
    if (step.Id().empty() || !node.SeekChild(step.Id().data())) return;
    step.sought = Sought::kByName;
    Visit(step, node);
    node.Up();
}

void NodeSearch::VisitByPlace(FICollectionElement& step, FIIterator& node) {
    const int place = PlaceOf(step.Id());
    if (place < 0 || !node.Down(place)) return;
    // What can be told by name was never chosen by its place.
    const bool is_told = IsPlaceId(step.Id()) && NameIdOf(node, siblings_).text.IsNull();
    step.sought = is_told ? Sought::kByPlace : Sought::kByLikelyPlace;
    Visit(step, node);
    node.Up();
}

void NodeSearch::VisitKeyed(FICollectionElement& step, const std::string& name, FIIterator& node) {
    const auto is_left = [&](const auto& child) {
        return child->is_wanted && NameOfKeyed(child->Id()) == name;
    };
    auto left = std::count_if(step.Steps().begin(), step.Steps().end(), is_left);
    FIValue listed;
    if (!node.SeekChild(name.c_str())) return;
    do {
        node.GetListedKey(listed);
        if (!listed.IsText() || name != listed.CStr()) continue;
        const FIValue id = KeyedIdOf(node);
        FICollectionElement* child = id.IsNull() ? nullptr : step.FindChild(id.CStr());
        if (!child || !child->is_wanted) continue;
        child->sought = Sought::kByKey;
        --left;
        Visit(*child, node);
    } while (left > 0 && node.Next());
    node.Up();
}

}  // namespace fixtop
