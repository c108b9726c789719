// SPDX-License-Identifier: Apache-2.0
#include "collection/collection_iterator.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "collection/step_ids.h"
#include "framework/iterator/shielded_iterator.h"
#include "framework/iterator/shown_scope.h"
#include "framework/path/path_names.h"

namespace fixtop {

namespace {

FIIterator& IteratorOf(FIReference& node) {
    return *static_cast<FIIterator*>(node.GetIterator());
}

int WayOf(const FICollectionElement& step) {
    switch (step.sought) {
        case FICollectionElement::Sought::kByPlace:
            return FICollectionIteratorBase::kByPlaces;
        case FICollectionElement::Sought::kByLikelyPlace:
            return FICollectionIteratorBase::kByLikelyPlace;
        default:
            return FICollectionIteratorBase::kByNames;
    }
}

bool IsUnitRow(const FIValue& name) {
    if (!name.IsText()) return false;
    return std::strcmp(name.CStr(), "uom") == 0 || std::strcmp(name.CStr(), "spec_uom") == 0;
}

}  // namespace

int CollectionIterator::Release() {
    const int left = --references_;
    if (left == 0) delete this;
    return left;
}

const void* CollectionIterator::TypeId() const {
    static const char type_id = 0;
    return &type_id;
}

// ---- the node ----

Ref<FIReference> CollectionIterator::Node() {
    FICollectionElement* item = at_.Item();
    if (item && !item->node) {
        // The search goes by the names.
        collection_->FollowNames();
        item = at_.Item();
    }
    return item ? collection_->NodeOf(*item) : Ref<FIReference>();
}

template <class Call>
auto CollectionIterator::OnEntry(Call call) {
    const Ref<FIReference> node = Node();
    const bool is_there = node && node->Rebind();
    FIEntry* const entry = is_there ? IteratorOf(*node).EntryAt(node->Depth()) : EmptyEntry();
    const ShownScope shown(Ref<FIEntry>::Share(entry), is_there ? node->GetVarSet() : nullptr);
    return call(*shown.operator->());
}

template <class Call>
void CollectionIterator::OnNode(FIValue& out, Call call) {
    if (const Ref<FIReference> node = Node()) {
        call(*node);
    } else {
        out.SetText(kNothingToWrite);
    }
}

// The client may let go of the iterator while a store runs.
template <class Call>
void CollectionIterator::OnUnits(FIValue& out, Call call) {
    const auto self = Ref<CollectionIterator>::Share(this);
    OnNode(out, [&](FIReference& node) {
        FICollectionElement* const item = at_.Item();
        call(node);
        if (at_.Item() == item && out.IsNull()) collection_->KeepUnits(*item);
    });
}

void CollectionIterator::GetKey(FIValue& out) {
    out.Clear();
    FICollectionElement* const item = at_.Item();
    if (!item) return;
    collection_->NodeOf(*item);
    if (!item->Id().empty()) out.SetText(item->Id().data());
}

void CollectionIterator::GetPath(FIValue& out) {
    out.Clear();
    const FICollectionElement* step = at_.Item();
    if (!step) return;
    std::string path;
    for (; step->Parent(); step = step->Parent()) path = JoinPath(WrittenStep(*step), path);
    out.SetText(path);
}

FIReferenceBase* CollectionIterator::GetNode() {
    const Ref<FIReference> node = Node();
    return node ? new Shielded<FIReference>(*node) : nullptr;
}

int CollectionIterator::Depth() {
    const FICollectionElement* const item = at_.Item();
    return item ? item->Depth() : 0;
}

void CollectionIterator::GetStep(int level, FIValue& out) {
    out.Clear();
    const FICollectionElement* step = at_.Item();
    if (!step || level < 0) return;
    for (int below = step->Depth() - 1; step && below > level; --below) step = step->Parent();
    if (step->Depth() == level + 1) out.SetText(WrittenStep(*step));
}

int CollectionIterator::GetWay() {
    const FICollectionElement* step = at_.Item();
    if (!step || !step->node) return kNoWay;
    int way = kByNames;
    for (; step->Parent(); step = step->Parent()) way = std::max<int>(way, WayOf(*step));
    return way;
}

void CollectionIterator::GetUnits(FIValue& unit, FIValue& spec_unit) {
    const FICollectionElement* const item = at_.Item();
    ItemUnits units = item ? item->Units() : ItemUnits();
    unit = std::move(units.unit);
    spec_unit = std::move(units.spec_unit);
}

// ---- reads ----

void CollectionIterator::GetAttribute(const FIValue& name, FIValue& out) {
    if (const Ref<FIReference> node = Node()) {
        node->GetAttribute(name, out);
    } else {
        out.SetText(kNothingToRead);
    }
}

void CollectionIterator::GetName(FIValue& out) {
    OnEntry([&](FIEntry& entry) { entry.GetName(out); });
}
FIAttributeSource* CollectionIterator::GetAttributeSource() {
    return OnEntry([](FIEntry& entry) { return entry.GetAttributeSource(); });
}
bool CollectionIterator::IsContainer() {
    return OnEntry([](FIEntry& entry) { return entry.IsContainer(); });
}
FIContext* CollectionIterator::GetContext() {
    return OnEntry([](FIEntry& entry) { return entry.GetContext(); });
}
int CollectionIterator::Compare(FIEntry& other) {
    return OnEntry([&](FIEntry& entry) { return entry.Compare(other); });
}
bool CollectionIterator::QueryService(int kind, void** out) {
    return OnEntry([=](FIEntry& entry) { return entry.QueryService(kind, out); });
}
bool CollectionIterator::ReleaseService(void** out) {
    return OnEntry([=](FIEntry& entry) { return entry.ReleaseService(out); });
}

// ---- the host's callbacks and holds ----

bool CollectionIterator::Subscribe(void* owner, int kind, FICallback callback) {
    return OnEntry([=](FIEntry& entry) { return entry.Subscribe(owner, kind, callback); });
}
bool CollectionIterator::Unsubscribe(void* owner, int kind) {
    return OnEntry([=](FIEntry& entry) { return entry.Unsubscribe(owner, kind); });
}
bool CollectionIterator::CanHold() {
    return OnEntry([](FIEntry& entry) { return entry.CanHold(); });
}
void CollectionIterator::BeginBatch() {
    OnEntry([](FIEntry& entry) { entry.BeginBatch(); });
}
void CollectionIterator::EndBatch(int argument) {
    OnEntry([=](FIEntry& entry) { entry.EndBatch(argument); });
}

// ---- stores ----

void CollectionIterator::SetAttribute(const FIValue& name, const FIValue& value, int mode,
                                      FIValue& out) {
    const auto store = [&](FIReference& node) { node.SetAttribute(name, value, mode, out); };
    if (IsUnitRow(name)) {
        OnUnits(out, store);
    } else {
        OnNode(out, store);
    }
}
void CollectionIterator::SetValue(const FIValue& value, int mode, FIValue& out) {
    OnNode(out, [&](FIReference& node) { node.SetValue(value, mode, out); });
}
void CollectionIterator::SetValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                                        FIValue& out) {
    OnNode(out, [&](FIReference& node) { node.SetValueInUnit(value, unit, mode, out); });
}
void CollectionIterator::SetSpecValue(const FIValue& value, int mode, FIValue& out) {
    OnNode(out, [&](FIReference& node) { node.SetSpecValue(value, mode, out); });
}
void CollectionIterator::SetSpecValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                                            FIValue& out) {
    OnNode(out, [&](FIReference& node) { node.SetSpecValueInUnit(value, unit, mode, out); });
}
void CollectionIterator::SetUnit(const FIValue& unit, FIValue& out) {
    OnNode(out, [&](FIReference& node) { node.SetUnit(unit, out); });
}
void CollectionIterator::SetSpecUnit(const FIValue& unit, FIValue& out) {
    OnNode(out, [&](FIReference& node) { node.SetSpecUnit(unit, out); });
}
void CollectionIterator::SetDisplayUnit(const FIValue& unit, const FIValue& quantity,
                                        FIValue& out) {
    OnUnits(out, [&](FIReference& node) { node.SetDisplayUnit(unit, quantity, out); });
}
void CollectionIterator::SetDisplaySpecUnit(const FIValue& unit, const FIValue& quantity,
                                            FIValue& out) {
    OnUnits(out, [&](FIReference& node) { node.SetDisplaySpecUnit(unit, quantity, out); });
}

// ---- what a client may do beyond ----

int CollectionIterator::GetCaps(int a, int b) {
    return OnEntry([=](FIEntry& entry) { return entry.GetCaps(a, b); });
}
void CollectionIterator::DoAction(FIValue& out, int a, int b) {
    OnEntry([&](FIEntry& entry) { entry.DoAction(out, a, b); });
}
void CollectionIterator::DoActionEx(FIValue& out, int a, int b, int c, int d) {
    OnEntry([&](FIEntry& entry) { entry.DoActionEx(out, a, b, c, d); });
}
void CollectionIterator::DoCommand(int command, FIErrorRecord& error) {
    OnEntry([&](FIEntry& entry) { entry.DoCommand(command, error); });
}

}  // namespace fixtop
