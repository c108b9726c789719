// SPDX-License-Identifier: Apache-2.0
// Collection: items whose nodes are called otherwise by now get the steps that lead there, so that
// they are told, and kept, under the names that they have.

#include <algorithm>
#include <unordered_map>

#include "collection/collection.h"

namespace fixtop {

namespace {

// Whether steps still have the ids of their nodes. Steps that items share are asked once.
class NameCheck {
 public:
    explicit NameCheck(KeyedSiblings& siblings) : siblings_(siblings) {}

    bool IsRight(const FICollectionElement& item, FIIterator& node) {
        if (!HasStepId(item, node, siblings_)) return false;
        return !item.Parent() || IsRightAbove(*item.Parent(), node, 1);
    }

 private:
    bool IsRightAbove(const FICollectionElement& step, FIIterator& node, int levels) {
        if (!step.Parent()) return true;
        const auto [known, is_new] = known_.try_emplace(&step, false);
        if (!is_new) return known->second;
        const auto at = Ref<FIIterator>::Adopt(node.Copy());
        for (int i = 0; i < levels; ++i) at->Up();
        const bool is_right =
            HasStepId(step, *at, siblings_) && IsRightAbove(*step.Parent(), node, levels + 1);
        return known_[&step] = is_right;
    }

    KeyedSiblings& siblings_;
    std::unordered_map<const FICollectionElement*, bool> known_;
};

void DropEmptySteps(FICollectionElement& step) {
    std::vector<FICollectionElement*> below;
    for (const auto& each : step.Steps()) below.push_back(each.get());
    for (FICollectionElement* each : below) {
        DropEmptySteps(*each);
        if (!each->IsItem() && !each->HasChildren()) step.RemoveChild(*each);
    }
}

}  // namespace

// Who is told meanwhile that a node is gone may do anything; then it is left for the next time.
std::vector<Collection::Renamed> Collection::FindRenamed() {
    std::vector<Renamed> renamed;
    NameCheck names(siblings_);
    const std::uint32_t changes = items_.Changes();
    for (ItemPosition at(items_); at.Next();) {
        const Ref<FIReference> node = at.Item()->node;
        if (!node || !node->Rebind() || changes != items_.Changes()) continue;
        auto& it = *static_cast<FIIterator*>(node->GetIterator());
        if (names.IsRight(*at.Item(), it)) continue;
        std::vector<StepId> ids = IdsOf(it);
        if (changes == items_.Changes() && HaveTexts(ids)) {
            renamed.push_back({at.Item(), std::move(ids)});
        }
    }
    if (changes != items_.Changes()) return {};
    named_at_ = top_->Life()->Revision();
    return renamed;
}

void Collection::FollowNames() {
    const Liveness* life = top_ ? top_->Life() : nullptr;
    if (!life || life->HasEnded() || life->IsCurrent(named_at_)) return;
    const auto self = Ref<Collection>::Share(this);
    std::vector<Renamed> renamed = FindRenamed();
    if (renamed.empty()) return;
    std::vector<std::unique_ptr<FICollectionElement>> taken(renamed.size());
    try {
        // All of them first, since one may be called as another one was.
        for (std::size_t i = 0; i < taken.size(); ++i) taken[i] = renamed[i].item->TakeOff();
        for (std::size_t i = 0; i < taken.size(); ++i) Plant(taken[i], renamed[i].ids);
    } catch (...) {
        for (const auto& each : taken) {
            if (each) Withdraw(*each);
        }
        throw;
    }
    DropEmptySteps(*root_);
}

void Collection::Withdraw(FICollectionElement& item) {
    LeaveAlone(item);
    items_.TakeOut(item);
}

// One whose node is gone gives way to the one that is called so now; of two on one node the one
// that is there stays.
void Collection::Plant(std::unique_ptr<FICollectionElement>& item, const std::vector<StepId>& ids) {
    FICollectionElement* parent = root_.get();
    for (std::size_t i = 0; i + 1 < ids.size(); ++i) parent = &StepBelow(*parent, ids[i]);
    FICollectionElement* const there = parent->FindChild(ids.back().text.CStr());
    if (there && there->IsItem() && there->node && !there->node->IsGone()) {
        Withdraw(*item);
        item.reset();
        return;
    }
    if (there && there->IsItem()) Withdraw(*there);
    if (there) item->TakeChildrenOf(*there);
    if (there) parent->RemoveChild(*there);
    item->Call(ids.back().text, ids.back().sought);
    parent->AddChild(std::move(item));
}

}  // namespace fixtop
