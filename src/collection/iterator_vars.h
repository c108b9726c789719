// SPDX-License-Identifier: Apache-2.0
#pragma once

// IteratorVars, IteratorVarsCursorBase, IteratorVarEntry: what lies below a published node, shown
// as it is shown itself.

#include "collection/flat_cursor.h"
#include "collection/published_node.h"

namespace fixtop {

class IteratorVars : public CountedFromZero<FIContext> {
 public:
    // On a copy of the iterator.
    explicit IteratorVars(FIIterator& node) : node_(Ref<FIIterator>::Adopt(node.Copy())) {}

    FICursorBase* MakeCursor(int kind) override;

    FIIterator& Node() const { return *node_; }

 private:
    const Ref<FIIterator> node_;
};

class IteratorVarEntry : public PublishedNode {
 public:
    using PublishedNode::PublishedNode;
};

class IteratorVarsCursorBase : public FlatCursor<IteratorVarsCursorBase> {
 public:
    explicit IteratorVarsCursorBase(IteratorVars& list);
    IteratorVarsCursorBase(const IteratorVarsCursorBase& other);

    void GetKey(FIValue& out) override;
    // Null at the end.
    FIEntry* GetEntry() override;
    bool IsSameList(const IteratorVarsCursorBase& other) const;

 protected:
    int Count() override;
    bool GoTo(int index) override;

 private:
    const Ref<IteratorVars> list_;
    // On the present child; past the last it is not used.
    const Ref<FIIterator> child_;
};

}  // namespace fixtop
