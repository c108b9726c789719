// SPDX-License-Identifier: Apache-2.0
#include "collection/published_node.h"

#include "collection/iterator_vars.h"
#include "framework/nodes/empties.h"
#include "framework/nodes/shield.h"

namespace fixtop {

namespace {

constexpr int kLongestName = 1024;

}  // namespace

PublishedNode::PublishedNode(FIContext& list, Ref<FIIterator> node, int index)
    : list_(Ref<FIContext>::Share(&list)), node_(std::move(node)), index_(index) {
    has_children_ = node_->DownFirst();
    if (has_children_) node_->Up();
}

void PublishedNode::GetName(FIValue& out) {
    char path[kLongestName];
    node_->PathText(path, sizeof path);
    out.SetText("");
    out.AppendText(path, true);
}

void PublishedNode::GetAttribute(const FIValue& name, FIValue& out) {
    node_->GetAttribute(name, out);
}

FIContext* PublishedNode::GetContext() {
    if (!has_children_) return EmptyContext();
    return HandOut(new Shielded<IteratorVars>(*node_));
}

int PublishedNode::Compare(FIEntry& other) {
    const auto* that = dynamic_cast<const PublishedNode*>(&other);
    if (!that || that->has_children_ != has_children_) return kNotComparable;
    return (index_ > that->index_) - (index_ < that->index_);
}

void ReadPublishedKey(FIIterator& node, FIValue& out) {
    static const FIValue path_name("path");
    FIValue path;
    node.GetAttribute(path_name, path);
    out.Clear();
    if (path.IsNull()) return;
    out.SetText("");
    out.AppendValue(path, true);
}

}  // namespace fixtop
