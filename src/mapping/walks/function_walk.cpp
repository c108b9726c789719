// SPDX-License-Identifier: Apache-2.0
#include "mapping/walks/function_walk.h"

#include <algorithm>
#include <cstdint>

#include "diagnostics/memory_guard.h"
#include "mapping/translators/reference_move.h"

namespace fixtop {

namespace {

const FIValue& SubclassName() {
    static const FIValue name(kSubclassVariable);
    return name;
}

}  // namespace

CDTVariableIterator::CDTVariableIterator(ArrayFunction function, FIReferenceBase& reference,
                                         ListLength length, bool steps_on,
                                         const LateVariables* late)
    : function_(function), reference_(reference), steps_on_(steps_on), late_(late) {
    if (function_ != nullptr) {
        MoveReference(reference_, [&](FIIteratorBase& it) {
            FIValue unused;
            there_ = function_(&it, &unused, kCountIndex);
            const bool whole = length == ListLength::kWhole;
            count_ = whole ? std::max(there_, 0) : static_cast<std::uint8_t>(there_);
            return true;
        });
    }
    base_depth_ = reference_.Depth();
    First();
}

CDTVariableIterator::CDTVariableIterator(const CDTVariableIterator& other,
                                         FIReferenceBase& reference)
    : function_(other.function_),
      reference_(reference),
      there_(other.there_),
      count_(other.count_),
      position_(other.position_),
      base_depth_(other.base_depth_),
      steps_on_(other.steps_on_),
      late_(other.late_),
      element_depth_(other.element_depth_) {}

CDTVariableIterator::~CDTVariableIterator() {
    memory::Contain([this] { PopTo(reference_, base_depth_); });
}

std::unique_ptr<CDTBase> CDTVariableIterator::Clone(FIReferenceBase& reference) const {
    return std::unique_ptr<CDTBase>(new CDTVariableIterator(*this, reference));
}

// Behind the last element when the node is gone.
bool CDTVariableIterator::Enter(int position) {
    const bool entered = MoveReference(reference_, [&](FIIteratorBase& it) {
        PopTo(it, base_depth_);
        FIValue subclass;
        if (late_) static_cast<FIIterator&>(it).SetLateVars(*late_, position);
        (late_ ? late_->select : function_)(&it, &subclass, position);
        it.SetVar(SubclassName(), subclass);
        element_depth_ = it.Depth();
        return true;
    });
    position_ = entered ? position : count_;
    return entered;
}

bool CDTVariableIterator::StepOn() {
    return MoveReference(reference_, [this](FIIteratorBase& it) {
        PopTo(it, element_depth_);
        FIValue subclass;
        if (function_(&it, &subclass, kNextIndex) != kNextIndex) return false;
        it.SetVar(SubclassName(), subclass);
        ++position_;
        return true;
    });
}

void CDTVariableIterator::ClearSubclass() {
    MoveReference(reference_, [](FIIteratorBase& it) {
        it.SetVar(SubclassName(), FIValue());
        return true;
    });
}

bool CDTVariableIterator::First() {
    position_ = 0;
    return count_ > 0 && Enter(0);
}

bool CDTVariableIterator::Next() {
    if (position_ == count_) return false;
    if (position_ + 1 == count_) return Last();
    return (steps_on_ && StepOn()) || Enter(position_ + 1);
}

bool CDTVariableIterator::Last() {
    position_ = count_;
    ClearSubclass();
    return false;
}

bool CDTVariableIterator::Prev() {
    return position_ > 0 && Enter(position_ - 1);
}

}  // namespace fixtop
