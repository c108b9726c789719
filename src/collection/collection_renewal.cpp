// SPDX-License-Identifier: Apache-2.0
// Collection: items follow their nodes to new names.

#include <algorithm>
#include <set>

#include "collection/collection.h"
#include "framework/iterator/shielded_iterator.h"

namespace fixtop {

namespace {

using Ids = std::vector<StepId>;

Ids IdsOfSteps(const FICollectionElement& item) {
    Ids ids;
    for (const auto* step = &item; step->Parent(); step = step->Parent()) {
        ids.push_back({FIValue(step->Id().data()), step->sought});
    }
    std::reverse(ids.begin(), ids.end());
    return ids;
}

bool IsSame(const Ids& a, const Ids& b) {
    const auto is_same = [](const StepId& one, const StepId& other) {
        return one.text.Compare(other.text) == 0;
    };
    return std::ranges::equal(a, b, is_same);
}

bool IsLive(const FICollectionElement& item) {
    return item.node && !item.node->IsGone();
}

// Whether its path says which node was chosen: one that leads there by chance stays.
bool IsSure(const Ids& ids) {
    return std::ranges::none_of(ids, [](const StepId& id) {
        return id.text.IsNull() || id.sought == FICollectionElement::Sought::kByLikelyPlace;
    });
}

}  // namespace

// Of an item whose node lives, as it is now; else as it was.
std::vector<StepId> Collection::PresentIds(FICollectionElement& item) {
    Ids old = IdsOfSteps(item);
    if (!IsLive(item) || !IsSure(old)) return old;
    Ids now = IdsOf(*static_cast<FIIterator*>(item.node->GetIterator()));
    return IsSure(now) ? now : old;
}

int Collection::Renew() {
    Liveness* const life = top_ && !top_->IsGone() ? top_->Life() : nullptr;
    if (!life || life->IsCurrent(renewed_at_)) return 0;
    const auto self = Ref<Collection>::Share(this);
    // Who hears of an end that is found out here may do anything; nobody is called below.
    for (ItemPosition at(items_); at.Next();) {
        if (const Ref<FIReference> node = at.Item()->node) node->Rebind();
    }
    int renewed = 0;
    std::vector<Ids> ways;
    for (FICollectionElement* each = items_.First(); each; each = each->Next()) {
        ways.push_back(PresentIds(*each));
        renewed += IsSame(ways.back(), IdsOfSteps(*each)) ? 0 : 1;
    }
    if (renewed > 0) Rebuild(ways);
    if (!life->HasEnded()) renewed_at_ = life->Revision();
    return renewed;
}

// Steps and items anew, a way each item. All that takes memory is made first.
void Collection::Rebuild(const std::vector<std::vector<StepId>>& ways) {
    auto root = std::make_unique<FICollectionElement>(*this, root_->Id());
    std::vector<FICollectionElement*> made;
    std::set<const FICollectionElement*> of_live;
    std::size_t index = 0;
    for (FICollectionElement* each = items_.First(); each; each = each->Next()) {
        FICollectionElement* step = root.get();
        for (const StepId& id : ways[index++]) step = &StepBelow(*step, id);
        if (IsLive(*each) && of_live.insert(step).second) step->SetUnits(each->Units());
        if (!of_live.contains(step)) step->SetUnits(each->Units());
        made.push_back(step);
    }
    std::swap(root_, root);
    for (FICollectionElement* step : made) {
        FICollectionElement& old = *items_.First();
        LeaveAlone(old);
        items_.TakeOut(old);
        // Something else is called now as one was that is gone.
        if (step->IsItem() || (!IsLive(old) && of_live.contains(step))) continue;
        step->node = std::move(old.node);
        step->position = old.position;
        step->told_in = old.told_in;
        step->is_end_told = old.is_end_told;
        items_.Append(*step);
    }
    last_way_ = {};
    if (!is_watching_) return;
    for (ItemPosition at(items_); is_watching_ && at.Next();) Listen(*at.Item());
}

}  // namespace fixtop
