// SPDX-License-Identifier: Apache-2.0
#pragma once

// PublishedNode: a view of a node that lies elsewhere in the tree, as an element of a flat list. It
// is called by its whole path, and is a container exactly when the node has a first child.

#include "fixtop/cursor.h"
#include "framework/iterator/iterator.h"
#include "framework/nodes/counted.h"

namespace fixtop {

class PublishedNode : public CountedFromZero<FIEntry> {
 public:
    // `node` is the entry's own; `list` is kept.
    PublishedNode(FIContext& list, Ref<FIIterator> node, int index);

    void GetName(FIValue& out) override;
    void GetAttribute(const FIValue& name, FIValue& out) override;
    FIAttributeSource* GetAttributeSource() override { return node_->GetAttributeSource(); }
    bool IsContainer() override { return has_children_; }
    // The children, which are shown in the same way; the shared empty context of a leaf.
    FIContext* GetContext() override;
    // By place; not comparable with a node of another kind.
    int Compare(FIEntry& other) override;

 private:
    const Ref<FIContext> list_;
    const Ref<FIIterator> node_;
    const int index_;
    bool has_children_ = false;
};

// Under which a node is listed: its attribute "path", in quotes where a path needs them.
void ReadPublishedKey(FIIterator& node, FIValue& out);

}  // namespace fixtop
