// SPDX-License-Identifier: Apache-2.0
#pragma once

// PublishedVars, PublishedVarsCursorBase, PublishedVarEntry: the items of a saved selection as one
// flat list of children, each a view of a node elsewhere in the tree. The root of the tree is none
// of them. They are found when the list is made.

#include "collection/collection.h"
#include "collection/flat_cursor.h"
#include "collection/published_node.h"

namespace fixtop {

class PublishedVars : public CountedFromZero<FIContext> {
 public:
    // The text of a selection, whose paths begin at the node on which the iterator stands.
    PublishedVars(const char* text, FIIterator& top);

    FICursorBase* MakeCursor(int kind) override;

    Collection& Items() const { return *items_; }
    // Whether both were made of one text below one node: then their places mean the same.
    bool IsSame(const PublishedVars& other) const;
    // At the node of the item of this place; on nothing when it has none.
    Ref<FIIterator> NodeAt(int index) const;

 private:
    const Ref<FIIterator> top_;
    const std::size_t text_hash_;
    const Ref<Collection> items_;
};

class PublishedVarEntry : public PublishedNode {
 public:
    using PublishedNode::PublishedNode;
};

class PublishedVarsCursorBase : public FlatCursor<PublishedVarsCursorBase> {
 public:
    explicit PublishedVarsCursorBase(PublishedVars& list)
        : list_(Ref<PublishedVars>::Share(&list)) {
        Stand(0);
    }

    void GetKey(FIValue& out) override;
    // Null at the end.
    FIEntry* GetEntry() override;
    bool IsSameList(const PublishedVarsCursorBase& other) const {
        return list_->IsSame(*other.list_);
    }

 protected:
    int Count() override { return list_->Items().Count(); }
    bool GoTo(int index) override { return index < Count(); }

 private:
    const Ref<PublishedVars> list_;
};

}  // namespace fixtop
