// SPDX-License-Identifier: Apache-2.0
// Collection: items come and go, are watched and looked for.

#include "collection/collection.h"

#include <algorithm>
#include <optional>

#include "collection/collection_iterator.h"
#include "collection/node_search.h"
#include "collection/shielded_collection.h"
#include "collection/step_ids.h"
#include "framework/iterator/shielded_iterator.h"
#include "framework/nodes/change_round.h"
#include "framework/path/path_match.h"

namespace fixtop {

namespace {

constexpr int kKinds[] = {kNodeDeleted, kValueChanged, kStructureChanged};

bool IsNowhere(FIIterator& node) {
    return node.EntryAt(node.Depth()) == EmptyEntry() || node.IsGone();
}

std::string NameOf(const FIIterator& top) {
    FIValue name;
    top.EntryAt(0)->GetName(name);
    return name.ToText();
}

}  // namespace

Ref<FICollectionBase> Collection::Make() {
    return Ref<FICollectionBase>::Adopt(new Shielded<Collection>());
}

Collection::~Collection() {
    memory::Contain([this] { Clear(); });
}

int Collection::Release() {
    const int left = --references_;
    if (left == 0) delete this;
    return left;
}

const void* Collection::TypeId() const {
    static const char type_id = 0;
    return &type_id;
}

FICollectionIteratorBase* Collection::MakeIterator() {
    return new Shielded<CollectionIterator>(*this);
}

Ref<FIIterator> Collection::TopOf(const FIIterator& node) {
    return Ref<FIIterator>::Adopt(new Shielded<FIIterator>(node.EntryAt(0), true));
}

// ---- items come ----

bool Collection::IsInTree(FIIterator& node) const {
    if (root_ && root_->Id() != NameOf(node)) return false;
    return !top_ || top_->Life() == node.Life();
}

// Those that are added one after the other share their way down to some node.
std::vector<StepId> Collection::IdsOf(FIIterator& node) {
    const Way last = std::move(last_way_);
    const auto depth = static_cast<std::size_t>(node.Depth());
    Way way{Ref<FIIterator>::Adopt(node.Copy()), std::vector<StepId>(depth), 0};
    std::size_t shared = 0;
    if (last.node && node.Life() == last.node->Life() && node.Life()->IsCurrent(last.revision)) {
        const auto is_same = [&](int level) {
            return last.node->EntryAt(level) == node.EntryAt(level);
        };
        const std::size_t most = std::min(depth, last.ids.size());
        while (shared < most && is_same(static_cast<int>(shared) + 1)) ++shared;
        std::copy_n(last.ids.begin(), shared, way.ids.begin());
    }
    const auto at = Ref<FIIterator>::Adopt(node.Copy());
    for (std::size_t level = depth; level > shared; --level) {
        way.ids[level - 1] = IdOf(*at, siblings_);
        at->Up();
    }
    std::vector<StepId> ids = way.ids;
    // Where nobody knows whether something was renamed the next one is asked again.
    if (!node.Life()) return ids;
    way.revision = node.Life()->Revision();
    last_way_ = std::move(way);
    return ids;
}

FICollectionElement* Collection::StepTo(FIIterator& node) {
    if (node.Depth() >= kMostSteps) return nullptr;
    std::vector<StepId> ids = IdsOf(node);
    if (!HaveTexts(ids)) return nullptr;
    if (!root_) root_ = std::make_unique<FICollectionElement>(*this, NameOf(node));
    FICollectionElement* step = root_.get();
    try {
        for (const StepId& id : ids) step = &StepBelow(*step, id);
    } catch (...) {
        Prune(step);
        throw;
    }
    return step;
}

FICollectionElement& Collection::StepBelow(FICollectionElement& step, const StepId& id) {
    if (FICollectionElement* child = step.FindChild(id.text.CStr())) return *child;
    auto made = std::make_unique<FICollectionElement>(*this, id.text.CStr());
    made->sought = id.sought;
    return step.AddChild(std::move(made));
}

void Collection::GetRootId(FIValue& out) {
    out.Clear();
    if (root_ && !root_->Id().empty()) out.SetText(root_->Id().data());
}

FICollectionElement* Collection::AddBefore(FIIteratorBase& given, FICollectionElement* behind) {
    auto* node = dynamic_cast<FIIterator*>(&given);
    const auto self = Ref<Collection>::Share(this);
    std::optional<ItemPosition> before;
    if (Contains(behind)) before.emplace(items_, *behind);
    FollowNames();
    if (!node || IsNowhere(*node) || !IsInTree(*node)) return nullptr;
    FICollectionElement* item = StepTo(*node);
    if (!item) return nullptr;
    const bool is_new = !item->IsItem();
    if (!is_new && item->node) {
        // Who is told now that it is gone may remove it.
        const ItemPosition place(items_, *item);
        const Ref<FIReference> known = item->node;
        const bool is_live = known->Rebind();
        if (place.Item() != item) return AddBefore(given, before ? before->Item() : nullptr);
        if (is_live && known->Place().ComparePlaces(*node) != 0) return nullptr;
    }
    if (is_new) items_.Insert(*item, before ? before->Item() : nullptr);
    try {
        if (!top_) top_ = TopOf(*node);
        if (is_new) item->SetUnits(UnitsShownBy(*node));
        if (!item->node || item->node->IsGone()) Bind(*item, *node);
    } catch (...) {
        if (is_new) Remove(item);
        throw;
    }
    return item;
}

int Collection::AddMatches(FIIteratorBase& from, const FIValue& path) {
    auto* start = dynamic_cast<FIIterator*>(&from);
    const PreparedPath prepared(path);
    if (!start || !prepared.Error().IsNull()) return -1;
    const auto self = Ref<Collection>::Share(this);
    const int before = Count();
    ForEachMatch(*start, prepared, [&](const PathMatch& match) {
        Add(match.node);
        return true;
    });
    return Count() - before;
}

void Collection::Bind(FICollectionElement& item, FIIterator& node) {
    LeaveAlone(item);
    item.node = Ref<FIReference>::Adopt(static_cast<FIReference*>(node.MakeReference()));
    item.is_end_told = false;
    ShowIn(item.Units(), *static_cast<FIIterator*>(item.node->GetIterator()));
    if (is_watching_) Listen(item);
}

void Collection::KeepUnits(FICollectionElement& item) {
    if (item.node) item.SetUnits(UnitsShownBy(*static_cast<FIIterator*>(item.node->GetIterator())));
}

// ---- items go ----

// Steps that are no items and lead to none go too.
void Collection::Prune(FICollectionElement* step) {
    while (step && !step->HasChildren() && !step->IsItem()) {
        FICollectionElement* const parent = step->Parent();
        if (!parent) {
            root_.reset();
            top_.Reset();
            ForgetLists();
            return;
        }
        parent->RemoveChild(*step);
        step = parent;
    }
}

bool Collection::Remove(FICollectionElement* item) {
    if (!Contains(item)) return false;
    items_.TakeOut(*item);
    LeaveAlone(*item);
    // Whoever hears of its end must not find half an item.
    const Ref<FIReference> node = std::move(item->node);
    item->SetUnits({});
    Prune(item);
    return true;
}

bool Collection::RemoveAt(int index) {
    FICollectionElement* const item = items_.At(index);
    return item && Remove(item);
}

void Collection::Clear() {
    for (FICollectionElement* each = items_.First(); each; each = items_.First()) {
        LeaveAlone(*each);
        items_.TakeOut(*each);
    }
    top_.Reset();
    ForgetLists();
    const std::unique_ptr<FICollectionElement> steps = std::move(root_);
}

bool Collection::Contains(const FICollectionElement* item) {
    return item && &item->Owner() == this && item->IsItem();
}

int Collection::IndexOf(const FICollectionElement* item) {
    return Contains(item) ? items_.RankOf(*item) : -1;
}

// ---- nodes are looked for ----

void Collection::FindMissing() {
    const auto has_none = [](const FICollectionElement* item) { return item && !item->node; };
    FICollectionElement* missing = items_.First();
    while (missing && !has_none(missing)) missing = missing->Next();
    if (!missing || !top_ || top_->IsGone()) return;
    FollowNames();
    if (!top_) return;
    NodeSearch search([this](FICollectionElement& item, FIIterator& node) { Bind(item, node); });
    for (FICollectionElement* each = items_.First(); each; each = each->Next()) {
        if (!each->node) search.Want(*each);
    }
    search.Run(*Ref<FIIterator>::Adopt(top_->Copy()));
}

void Collection::Find(FICollectionElement& item) {
    if (!top_ || top_->IsGone()) return;
    NodeSearch search([this](FICollectionElement& found, FIIterator& node) { Bind(found, node); });
    search.Want(item);
    search.Run(*Ref<FIIterator>::Adopt(top_->Copy()));
}

Ref<FIReference> Collection::NodeOf(FICollectionElement& item) {
    if (!item.node && is_watching_) Find(item);
    return item.node;
}

// ---- watching ----

template <int kKind>
void Collection::OnChange(void* owner, int) {
    auto& item = *static_cast<FICollectionElement*>(owner);
    // Whichever list is told first, and the reference tells its end as a change of value, too.
    const bool is_end = item.node && item.node->IsGone();
    item.Owner().Tell(item, is_end ? kNodeDeleted : kKind);
}

void Collection::Listen(FICollectionElement& item) {
    const Ref<FIReference> node = item.node;
    if (!node || item.is_watched) return;
    item.is_watched = true;
    const ItemPosition place(items_, item);
    static constexpr FICallback callbacks[] = {&OnChange<kNodeDeleted>, &OnChange<kValueChanged>,
                                               &OnChange<kStructureChanged>};
    for (int kind : kKinds) {
        // The reference may find out that its node is gone, and those who are told do anything.
        if (place.Item() == &item && item.is_watched) node->Subscribe(&item, kind, callbacks[kind]);
    }
}

void Collection::LeaveAlone(FICollectionElement& item) {
    if (!item.is_watched) return;
    item.is_watched = false;
    for (int kind : kKinds) item.node->Unsubscribe(&item, kind);
}

void Collection::StartWatching() {
    const auto self = Ref<Collection>::Share(this);
    is_watching_ = true;
    FindMissing();
    for (ItemPosition at(items_); is_watching_ && at.Next();) Listen(*at.Item());
}

void Collection::StopWatching() {
    is_watching_ = false;
    for (FICollectionElement* each = items_.First(); each; each = each->Next()) LeaveAlone(*each);
}

// What a case tells in one round is one change, though a reference hears of it more than once. Who
// was told of a change that came within a call knows of the one around it, too.
void Collection::Tell(FICollectionElement& item, int kind) {
    const std::uint64_t round = ChangeRound::Present();
    if (!is_watching_ || item.is_end_told || (round != 0 && item.told_in >= round)) return;
    item.told_in = round;
    item.is_end_told = kind == kNodeDeleted;
    const auto self = Ref<Collection>::Share(this);
    const ItemPosition place(items_, item);
    subscribers_.Tell(&item, kind, [&] { return is_watching_ && place.Item() == &item; });
}

bool Collection::Subscribe(void* owner, void* tag, FICollectionCallback callback) {
    if (items_.IsEmpty() || !callback) return false;
    subscribers_.Add(owner, tag, callback);
    return true;
}

// Whoever leaves has left, also when there is nothing that he could have been told.
bool Collection::Unsubscribe(void* owner, void* tag) {
    return subscribers_.Remove(owner, tag) && !items_.IsEmpty();
}

}  // namespace fixtop
