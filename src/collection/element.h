// SPDX-License-Identifier: Apache-2.0
#pragma once

// FICollectionElement: one step of the paths of a collection, and when it is an item, also the
// item: its node, its units and its place among the items. A step owns the steps below it, in the
// order of their ids; the collection owns the first.

#include <cstdint>
#include <memory>
#include <set>
#include <string_view>

#include "collection/item_units.h"
#include "diagnostics/instance_counts.h"
#include "fixtop/ref.h"
#include "fixtop/value.h"
#include "framework/reference/reference.h"
#include "platform/prefetch.h"

namespace fixtop {

class Collection;

class FICollectionElement : private Counted<CountedClass::FICollectionElement> {
 public:
    // How the id leads from the node above to this one; unknown until it has.
    enum class Sought : std::uint8_t {
        kUnknown,
        kByName,
        kByKey,
        kByPlace,
        // With which a name begins, or that could have been told by name.
        kByLikelyPlace
    };

    struct ById {
        using is_transparent = void;
        using Owned = std::unique_ptr<FICollectionElement>;
        bool operator()(const Owned& a, const Owned& b) const { return a->Id() < b->Id(); }
        bool operator()(const Owned& a, std::string_view b) const { return a->Id() < b; }
        bool operator()(std::string_view a, const Owned& b) const { return a < b->Id(); }
    };
    using Children = std::set<std::unique_ptr<FICollectionElement>, ById>;

    // Positions of a step that is no item, and of an item without a stated one.
    static constexpr int kNoItem = -1;
    static constexpr int kUnstated = -2;

    FICollectionElement(Collection& collection, std::string_view id);
    ~FICollectionElement();
    FICollectionElement(const FICollectionElement&) = delete;
    FICollectionElement& operator=(const FICollectionElement&) = delete;

    Collection& Owner() const { return collection_; }
    // Empty for a step that can't be sought. A zero stands behind it.
    std::string_view Id() const;
    FICollectionElement* Parent() const { return parent_; }
    // Count of the steps above.
    int Depth() const;

    bool HasChildren() const { return children_ && !children_->empty(); }
    const Children& Steps() const;
    FICollectionElement* FindChild(std::string_view id) const;
    // A step of this id may not be there yet.
    FICollectionElement& AddChild(std::unique_ptr<FICollectionElement> child);
    // The child is gone after it.
    void RemoveChild(FICollectionElement& child);
    // Takes the step itself out of the tree; one of its id that is no item stays there for those
    // below it.
    std::unique_ptr<FICollectionElement> TakeOff();
    // This one has none of its own, and is in no tree.
    void TakeChildrenOf(FICollectionElement& other);
    // Of one that is in no tree.
    void Call(const FIValue& id, Sought sought_by);

    ItemUnits Units() const { return units_ ? *units_ : ItemUnits(); }
    void SetUnits(const ItemUnits& units);
    bool HasUnits() const { return units_ != nullptr; }

    void PrefetchSelf() const {
        Prefetch(&node);
        Prefetch(&next_);
    }

    bool IsItem() const { return is_item_; }
    // No other item of the collection ever has the same.
    std::uint32_t Arrival() const { return arrival_; }
    // The item behind this one; null for the last.
    FICollectionElement* Next() const { return next_; }

    // Null while the item has none.
    Ref<FIReference> node;
    int position = kNoItem;
    Sought sought = Sought::kUnknown;
    // A search is on for a node at or below this step.
    bool is_wanted = false;
    // The subscriptions at the node are there.
    bool is_watched = false;
    // The end of the node was told.
    bool is_end_told = false;
    // It leads to an item that is to be written; the place of an item among those.
    bool is_written = false;
    int written_rank = 0;
    // The last round of notifications in which it was told of a change.
    std::uint64_t told_in = 0;

 private:
    friend class ItemList;
    friend class ItemPosition;

    Collection& collection_;
    FICollectionElement* parent_ = nullptr;
    FICollectionElement* next_ = nullptr;
    FICollectionElement* previous_ = nullptr;
    int rank_ = 0;
    std::uint32_t arrival_ = 0;
    bool is_item_ = false;
    std::unique_ptr<Children> children_;
    std::unique_ptr<ItemUnits> units_;
    FIValue id_;
};

}  // namespace fixtop
