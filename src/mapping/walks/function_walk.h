// SPDX-License-Identifier: Apache-2.0
#pragma once

// The elements that an array function counts and reaches. Unless the list is to be whole the count
// is held in a byte: a function that counts 256 has no elements, one that counts 300 has 44.
//
// Each element is reached anew from the depth at which the walk began; the function may leave the
// reference deeper. A function that takes kNextIndex goes on from the element before instead, or a
// list would be walked from its start for each. The class that it names for an element is the
// variable "Subclass" there, NULL when it names none, and behind the last element. Late variables
// of an element are found out when one of them is asked for there.

#include "diagnostics/instance_counts.h"
#include "fixtop/semantic_function.h"
#include "mapping/walks/element_walk.h"
#include "model/model_types.h"

namespace fixtop {

class CDTVariableIterator final : public CDTBase,
                                  private Counted<CountedClass::CDTVariableIterator> {
 public:
    // Asks for the count and goes to the first element. Without a function there are none.
    // `steps_on`: the function takes kNextIndex. `late`: of its variables, null for none.
    CDTVariableIterator(ArrayFunction function, FIReferenceBase& reference,
                        ListLength length = ListLength::kByte, bool steps_on = false,
                        const LateVariables* late = nullptr);
    ~CDTVariableIterator() override;

    std::unique_ptr<CDTBase> Clone(FIReferenceBase& reference) const override;
    bool HasMore() const override { return position_ < count_; }
    bool First() override;
    bool Next() override;
    bool Last() override;
    bool Prev() override;
    bool NamesClasses() const override { return true; }
    Count Counted() const override { return {there_, count_}; }

 private:
    CDTVariableIterator(const CDTVariableIterator& other, FIReferenceBase& reference);

    bool Enter(int position);
    // To the element behind the present one, without counting.
    bool StepOn();
    void ClearSubclass();

    ArrayFunction function_;
    FIReferenceBase& reference_;
    int there_ = 0;
    int count_ = 0;
    int position_ = 0;
    int base_depth_ = 0;
    bool steps_on_ = false;
    const LateVariables* late_ = nullptr;
    int element_depth_ = 0;
};

}  // namespace fixtop
