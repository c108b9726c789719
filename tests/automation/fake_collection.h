// SPDX-License-Identifier: Apache-2.0
#pragma once

// A collection for tests of the objects around one: it keeps references in a list, notes what it is
// asked to store, and tells of changes when the test says so.

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "fixtop/collection.h"
#include "fixtop/iterator.h"
#include "fixtop/ref.h"
#include "fixtop/reference.h"
#include "framework/nodes/empties.h"

namespace fixtop {

class FakeCollection final : public FICollectionBase {
 public:
    struct Item {
        Ref<FIReferenceBase> node;
        // What GetValues answers; a store changes it unless it is refused.
        FIValue value;
        bool refuses = false;
        // Is removed while values are stored, before it is its turn.
        bool leaves = false;
    };

    FakeCollection() { ++alive; }
    ~FakeCollection() override { --alive; }

    int AddRef() override { return ++references_; }
    int Release() override {
        const int left = --references_;
        if (left == 0) delete this;
        return left;
    }
    const void* TypeId() const override { return &alive; }
    FICollectionIteratorBase* MakeIterator() override;

    void StartWatching() override { watching = true; }
    void StopWatching() override { watching = false; }
    int Count() override { return static_cast<int>(items.size()); }
    void GetValues(const FIValue& attribute, FIValue* values) override {
        attribute_asked = attribute.ToText();
        for (std::size_t i = 0; i < items.size(); ++i) values[i] = items[i]->value;
    }
    // Nobody here asks for rows.
    void GetRows(const FIValue*, int, FIValue*) override { std::abort(); }
    void SetValues(const FIValue& attribute, const FIValue* values, int count, const FIValue& unit,
                   FIValue* outs) override {
        attribute_asked = attribute.ToText();
        unit_asked = unit.IsNull() ? "(NULL)" : unit.ToText();
        ++stores;
        for (int i = 0; i < count; ++i) {
            Item& item = *items[static_cast<std::size_t>(i)];
            if (item.leaves) continue;
            outs[i].Clear();
            if (item.refuses) outs[i].SetText("Not Supported");
            if (!item.refuses && !values[i].IsNull()) item.value = values[i];
        }
    }
    void ToXml(FIValue& out) override { out.SetText("<CollectionBackup>\n"); }
    bool FromXml(const char*) override { return false; }
    bool Subscribe(void* owner, void* tag, FICollectionCallback callback) override {
        if (items.empty()) return false;
        subscribers.push_back({owner, tag, callback});
        return true;
    }
    bool Unsubscribe(void* owner, void* tag) override {
        return std::erase_if(subscribers, [&](const Subscriber& each) {
                   return each.owner == owner && each.tag == tag;
               }) != 0;
    }
    int IndexOf(const FICollectionElement* item) override {
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (Element(i) == item) return static_cast<int>(i);
        }
        return -1;
    }
    void Clear() override { items.clear(); }
    bool Remove(FICollectionElement* item) override { return RemoveAt(IndexOf(item)); }
    bool RemoveAt(int index) override {
        if (index < 0 || index >= Count()) return false;
        items.erase(items.begin() + index);
        return true;
    }
    bool Contains(const FICollectionElement* item) override { return IndexOf(item) >= 0; }
    FICollectionElement* Add(FIIteratorBase& node) override {
        if (refuses_nodes) return nullptr;
        AddItem(Ref<FIReferenceBase>::Adopt(node.MakeReference()));
        return Element(items.size() - 1);
    }
    int AddMatches(FIIteratorBase&, const FIValue&) override { return 0; }
    bool Load(const char* text, FIIteratorBase& from) override {
        loaded = text;
        if (loads) Add(from);
        return loads;
    }
    FICollectionElement* ItemAt(int index) override {
        return index < Count() ? Element(static_cast<std::size_t>(index)) : nullptr;
    }
    void GetRootId(FIValue& out) override { out.Clear(); }

    Item& AddItem(Ref<FIReferenceBase> node) {
        items.push_back(std::make_unique<Item>(Item{std::move(node), {}}));
        return *items.back();
    }
    // Items are known by their address; nothing else is known of them here.
    FICollectionElement* Element(std::size_t index) {
        return reinterpret_cast<FICollectionElement*>(items[index].get());
    }
    // Tells those who subscribed that an item changed; none for an item that is not here.
    void Change(int index, int kind = kValueChanged) {
        const auto now = subscribers;
        FICollectionElement* const item =
            index < 0 ? nullptr : Element(static_cast<std::size_t>(index));
        for (const Subscriber& each : now) each.callback(each.owner, each.tag, item, kind);
    }

    struct Subscriber {
        void* owner;
        void* tag;
        FICollectionCallback callback;
    };

    static inline int alive = 0;

    std::vector<std::unique_ptr<Item>> items;
    std::vector<Subscriber> subscribers;
    bool watching = false;
    bool refuses_nodes = false;
    bool loads = false;
    int stores = 0;
    std::string attribute_asked;
    std::string unit_asked;
    std::string loaded;

 private:
    int references_ = 1;
};

// Before the first at -1.
class FakeItems final : public FICollectionIteratorBase {
 public:
    explicit FakeItems(FakeCollection& collection)
        : collection_(Ref<FakeCollection>::Share(&collection)) {}

    int AddRef() override { return ++references_; }
    int Release() override {
        const int left = --references_;
        if (left == 0) delete this;
        return left;
    }
    void GetName(FIValue& out) override { out.Clear(); }
    void GetAttribute(const FIValue& name, FIValue& out) override {
        out.SetText("No element under this node");
        if (FIReferenceBase* node = Node()) node->GetAttribute(name, out);
    }
    FIAttributeSource* GetAttributeSource() override { return EmptyEntry()->GetAttributeSource(); }
    FIContext* GetContext() override { return EmptyContext(); }

    const void* TypeId() const override { return &FakeCollection::alive; }
    FICollectionBase* Collection() override { return collection_.Get(); }
    FICollectionElement* Item() override {
        return IsValid() ? collection_->Element(static_cast<std::size_t>(place_)) : nullptr;
    }
    bool IsValid() override { return place_ >= 0 && !AtEnd(); }
    bool First() override { return Go(0); }
    bool Next() override { return Go(place_ + 1); }
    bool Last() override { return Go(collection_->Count() == 0 ? 0 : collection_->Count() - 1); }
    bool Previous() override { return Go(place_ - 1); }
    bool AtFirst() override { return place_ == 0; }
    bool AtEnd() override { return place_ >= collection_->Count(); }
    void GetKey(FIValue& out) override { out.Clear(); }
    void GetPath(FIValue& out) override { out.Clear(); }
    int Depth() override { return 0; }
    void GetStep(int, FIValue& out) override { out.Clear(); }
    int GetWay() override { return Node() ? kByNames : kNoWay; }
    void GetUnits(FIValue& unit, FIValue& spec_unit) override {
        unit.Clear();
        spec_unit.Clear();
    }
    FIReferenceBase* GetNode() override {
        FIReferenceBase* const node = Node();
        return node ? HandOut(node) : nullptr;
    }

 private:
    bool Go(int place) {
        place_ = place < -1 ? -1 : place > collection_->Count() ? collection_->Count() : place;
        return IsValid();
    }
    FIReferenceBase* Node() {
        if (!IsValid()) return nullptr;
        return collection_->items[static_cast<std::size_t>(place_)]->node.Get();
    }

    const Ref<FakeCollection> collection_;
    int place_ = -1;
    int references_ = 1;
};

inline FICollectionIteratorBase* FakeCollection::MakeIterator() {
    return new FakeItems(*this);
}

}  // namespace fixtop
