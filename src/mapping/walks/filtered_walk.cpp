// SPDX-License-Identifier: Apache-2.0
#include "mapping/walks/filtered_walk.h"

#include "mapping/translators/reference_move.h"

namespace fixtop {

std::unique_ptr<CDTBase> CDTFilter::Clone(FIReferenceBase& reference) const {
    auto clone = std::make_unique<CDTFilter>(inner_->Clone(reference), reference, filter_);
    clone->at_end_ = at_end_;
    clone->element_depth_ = element_depth_;
    return clone;
}

void CDTFilter::ReturnToElement() {
    if (element_depth_ >= 0) PopTo(reference_, element_depth_);
    element_depth_ = -1;
}

bool CDTFilter::Accepts() {
    element_depth_ = reference_.Depth();
    if (filter_.Accepts(reference_)) return true;
    ReturnToElement();
    return false;
}

bool CDTFilter::Settle(bool stands) {
    while (stands && !Accepts()) stands = inner_->Next();
    at_end_ = !stands;
    return stands;
}

bool CDTFilter::First() {
    ReturnToElement();
    return Settle(inner_->First());
}

bool CDTFilter::Next() {
    if (at_end_) return false;
    ReturnToElement();
    return Settle(inner_->Next());
}

bool CDTFilter::Last() {
    ReturnToElement();
    at_end_ = true;
    return inner_->Last();
}

// With no accepted element before this one it stays on the first.
bool CDTFilter::Prev() {
    ReturnToElement();
    while (inner_->Prev()) {
        if (!Accepts()) continue;
        at_end_ = false;
        return true;
    }
    First();
    return false;
}

}  // namespace fixtop
