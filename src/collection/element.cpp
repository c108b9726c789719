// SPDX-License-Identifier: Apache-2.0
#include "collection/element.h"

#include <string>

namespace fixtop {

FICollectionElement::FICollectionElement(Collection& collection, std::string_view id)
    : collection_(collection) {
    if (!id.empty()) id_.SetText(id.data(), id.size());
}

FICollectionElement::~FICollectionElement() = default;

std::string_view FICollectionElement::Id() const {
    return {id_.CStr(), static_cast<std::size_t>(id_.Length())};
}

int FICollectionElement::Depth() const {
    int depth = 0;
    for (const FICollectionElement* each = parent_; each; each = each->parent_) ++depth;
    return depth;
}

const FICollectionElement::Children& FICollectionElement::Steps() const {
    static const Children none;
    return children_ ? *children_ : none;
}

FICollectionElement* FICollectionElement::FindChild(std::string_view id) const {
    const auto found = Steps().find(id);
    return found == Steps().end() ? nullptr : found->get();
}

FICollectionElement& FICollectionElement::AddChild(std::unique_ptr<FICollectionElement> child) {
    if (!children_) children_ = std::make_unique<Children>();
    FICollectionElement& added = *child;
    // What is read from a file comes in this order.
    children_->insert(children_->end(), std::move(child));
    added.parent_ = this;
    return added;
}

void FICollectionElement::RemoveChild(FICollectionElement& child) {
    children_->erase(children_->find(child.Id()));
    if (children_->empty()) children_.reset();
}

std::unique_ptr<FICollectionElement> FICollectionElement::TakeOff() {
    std::unique_ptr<FICollectionElement> left;
    if (HasChildren()) {
        left = std::make_unique<FICollectionElement>(collection_, Id());
        left->sought = sought;
    }
    FICollectionElement& parent = *parent_;
    auto taken = parent.children_->extract(parent.children_->find(Id()));
    if (left) {
        left->TakeChildrenOf(*this);
        parent.AddChild(std::move(left));
    }
    parent_ = nullptr;
    return std::move(taken.value());
}

void FICollectionElement::TakeChildrenOf(FICollectionElement& other) {
    children_ = std::move(other.children_);
    for (const auto& each : Steps()) each->parent_ = this;
}

void FICollectionElement::Call(const FIValue& id, Sought sought_by) {
    id_ = id;
    sought = sought_by;
}

void FICollectionElement::SetUnits(const ItemUnits& units) {
    if (units.IsEmpty()) {
        units_.reset();
    } else if (units_) {
        *units_ = units;
    } else {
        units_ = std::make_unique<ItemUnits>(units);
    }
}

}  // namespace fixtop
