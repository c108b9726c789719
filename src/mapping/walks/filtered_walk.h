// SPDX-License-Identifier: Apache-2.0
#pragma once

// The elements of another walk that a filter accepts. The filter may lead from an element to
// another node, where the reference then stands; it is brought back before the next step.

#include "diagnostics/instance_counts.h"
#include "diagnostics/memory_guard.h"
#include "mapping/walks/element_walk.h"
#include "mapping/walks/function_filter.h"

namespace fixtop {

class CDTFilter final : public CDTBase, private Counted<CountedClass::CDTFilter> {
 public:
    // The inner walk is on the same reference. Stands nowhere before First.
    CDTFilter(std::unique_ptr<CDTBase> inner, FIReferenceBase& reference, CDTVariableFilter filter)
        : inner_(std::move(inner)), reference_(reference), filter_(std::move(filter)) {}
    ~CDTFilter() override {
        memory::Contain([this] { ReturnToElement(); });
    }

    std::unique_ptr<CDTBase> Clone(FIReferenceBase& reference) const override;
    bool HasMore() const override { return !at_end_; }
    bool First() override;
    bool Next() override;
    bool Last() override;
    bool Prev() override;

 private:
    void ReturnToElement();
    // Whether the filter accepts the element on which the inner walk stands.
    bool Accepts();
    // Steps on from an element, on which the inner walk stands or not, to the first accepted one.
    bool Settle(bool stands);

    std::unique_ptr<CDTBase> inner_;
    FIReferenceBase& reference_;
    CDTVariableFilter filter_;
    bool at_end_ = true;
    int element_depth_ = -1;  // below 0 while the reference is where the inner walk has it
};

}  // namespace fixtop
