// SPDX-License-Identifier: Apache-2.0
#include "mapping/walks/path_walk.h"

#include "mapping/translators/reference_move.h"
#include "path/path_step.h"

namespace fixtop {

std::unique_ptr<CDTBase> CDTPathIterator::Clone(FIReferenceBase& reference) const {
    auto clone = std::make_unique<CDTPathIterator>(path_, reference);
    clone->at_end_ = at_end_;
    clone->entered_ = entered_;
    clone->base_depth_ = base_depth_;
    clone->position_ = position_;
    return clone;
}

void CDTPathIterator::Release() {
    if (entered_) PopTo(reference_, base_depth_);
    entered_ = false;
    at_end_ = true;
}

// A path that matches the node itself is no way to elements.
bool CDTPathIterator::First() {
    Release();
    position_ = 0;
    entered_ = path_ != nullptr && MoveReference(reference_, [this](FIIteratorBase& it) {
                   base_depth_ = it.Depth();
                   return it.WalkFrom(*path_) && it.Depth() > base_depth_;
               });
    at_end_ = !entered_;
    return entered_;
}

bool CDTPathIterator::Next() {
    if (at_end_) return false;
    ++position_;
    if (MoveReference(reference_,
                      [this](FIIteratorBase& it) { return it.NextMatch(path_->Last()); })) {
        return true;
    }
    Release();
    return false;
}

bool CDTPathIterator::Last() {
    if (at_end_) First();
    while (Next()) {
    }
    return false;
}

// Where the path takes any sibling that passes its filters.
bool CDTPathIterator::StepBack(FIIteratorBase& it) const {
    const PathStep& step = path_->Last();
    while (it.Prev()) {
        if (it.Filter(step)) return true;
    }
    return false;
}

bool CDTPathIterator::Prev() {
    if (position_ == 0) return false;
    const int wanted = position_ - 1;
    const PathStep& step = path_->Last();
    if (!at_end_ && step.name == "*" && !step.isVariable &&
        MoveReference(reference_, [this](FIIteratorBase& it) { return StepBack(it); })) {
        position_ = wanted;
        return true;
    }
    First();
    while (position_ < wanted && Next()) {
    }
    return HasMore();
}

}  // namespace fixtop
