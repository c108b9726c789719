// SPDX-License-Identifier: Apache-2.0
#pragma once

// Collection: the one collection of the module; fixtop/collection.h tells the operations.
//
// The items' steps are a tree, so that a thousand variables of one stream share the way there, and
// looking for their nodes goes it once. Each item has a reference of its own, which finds its node
// again after a change of structure by itself.
// Re-entrance: a subscriber may do anything from within its call: the operation that led there
// holds the collection, and its place among the items survives what becomes of them.
// Limits: a way has at most kMostSteps steps, which is what the reader of the backup form takes.

#include <memory>
#include <string>
#include <vector>

#include "collection/collection_subscribers.h"
#include "collection/item_list.h"
#include "collection/keyed_siblings.h"
#include "collection/step_ids.h"
#include "diagnostics/instance_counts.h"
#include "fixtop/collection.h"
#include "framework/iterator/iterator.h"
#include "platform/xml_reader.h"

namespace fixtop {

struct ReadSelection;

class Collection : public FICollectionBase, private Counted<CountedClass::FICollectionBase> {
 public:
    static constexpr int kMostSteps = kMaxXmlDepth - 1;

    Collection() = default;
    Collection(const Collection&) = delete;
    Collection& operator=(const Collection&) = delete;
    // Empty; starts at one reference.
    static Ref<FICollectionBase> Make();

    int AddRef() override { return ++references_; }
    int Release() override;
    const void* TypeId() const override;
    FICollectionIteratorBase* MakeIterator() override;

    void StartWatching() override;
    void StopWatching() override;

    int Count() override { return items_.Count(); }
    void GetValues(const FIValue& attribute, FIValue* values) override;
    void SetValues(const FIValue& attribute, const FIValue* values, int count, const FIValue& unit,
                   FIValue* outs) override;

    void ToXml(FIValue& out) override;
    bool FromXml(const char* text) override;

    bool Subscribe(void* owner, void* tag, FICollectionCallback callback) override;
    bool Unsubscribe(void* owner, void* tag) override;

    int IndexOf(const FICollectionElement* item) override;
    void Clear() override;
    bool Remove(FICollectionElement* item) override;
    bool RemoveAt(int index) override;
    bool Contains(const FICollectionElement* item) override;

    FICollectionElement* Add(FIIteratorBase& node) override {
        return Collection::AddBefore(node, nullptr);
    }
    int AddMatches(FIIteratorBase& from, const FIValue& path) override;
    bool Load(const char* text, FIIteratorBase& from) override;
    FICollectionElement* ItemAt(int index) override { return items_.At(index); }
    void GetRootId(FIValue& out) override;
    void GetRows(const FIValue* attributes, int count, FIValue* values) override;
    // One that is gone gives way.
    void FollowNames() override;
    FICollectionElement* AddBefore(FIIteratorBase& node, FICollectionElement* behind) override;

    // Load, of the form of selections alone.
    bool LoadPaths(const char* text, FIIteratorBase& from);

    // For the collection's own iterators.

    ItemList& Items() { return items_; }
    // The item's reference; null when it has no node and none is found.
    Ref<FIReference> NodeOf(FICollectionElement& item);
    // The item takes over the units in which its reference shows the node.
    void KeepUnits(FICollectionElement& item);

 protected:
    ~Collection() override;

 private:
    // The ids down to a node, which held at a revision of its case.
    struct Way {
        Ref<FIIterator> node;
        std::vector<StepId> ids;
        std::uint64_t revision = 0;
    };

    // An item whose node is called otherwise than its steps.
    struct Renamed {
        FICollectionElement* item;
        std::vector<StepId> ids;
    };

    template <int kKind>
    static void OnChange(void* item, int);

    // At the root of the tree in which an iterator stands, with no units or variables of its own.
    static Ref<FIIterator> TopOf(const FIIterator& node);
    std::vector<StepId> IdsOf(FIIterator& node);
    void ForgetLists() {
        last_way_ = {};
        siblings_.Forget();
    }
    // The steps to a node, of which the missing ones are made; null when the way is too long.
    FICollectionElement* StepTo(FIIterator& node);
    FICollectionElement& StepBelow(FICollectionElement& step, const StepId& id);
    std::vector<Renamed> FindRenamed();
    void Plant(std::unique_ptr<FICollectionElement>& item, const std::vector<StepId>& ids);
    // The item is none any more, though its step is there yet.
    void Withdraw(FICollectionElement& item);
    // Whether a node belongs to the tree in which the nodes are sought.
    bool IsInTree(FIIterator& node) const;
    // Looks for the nodes of those items that have none.
    void FindMissing();
    void Find(FICollectionElement& item);
    // The item refers to the node on which the iterator stands.
    void Bind(FICollectionElement& item, FIIterator& node);
    void Listen(FICollectionElement& item);
    void LeaveAlone(FICollectionElement& item);
    void Tell(FICollectionElement& item, int kind);

    void Store(FICollectionElement& item, const FIValue& attribute, const FIValue& value,
               const FIValue& unit, FIValue& out);
    bool Take(ReadSelection read, FIIteratorBase& from);
    void Take(ReadSelection read, Ref<FIIterator> top);
    void AddPath(const std::string& path, FIIterator& root);
    void Prune(FICollectionElement* step);

    std::unique_ptr<FICollectionElement> root_;
    // Stands on the node of the root; null until a node was added.
    Ref<FIIterator> top_;
    // To the node that was added last.
    Way last_way_;
    KeyedSiblings siblings_;
    // The revision of the case at which the steps were called as their nodes.
    std::uint64_t named_at_ = 0;
    ItemList items_;
    CollectionSubscribers subscribers_;
    bool is_watching_ = false;
    int references_ = 1;
};

inline constexpr char kNothingToRead[] = "No element under this node";
inline constexpr char kNothingToWrite[] = "No element exists under this node";

}  // namespace fixtop
