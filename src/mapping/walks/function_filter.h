// SPDX-License-Identifier: Apache-2.0
#pragma once

// A test of application nodes by functions.

#include <memory>
#include <utility>

#include "diagnostics/instance_counts.h"
#include "fixtop/reference.h"
#include "fixtop/semantic_function.h"

namespace fixtop {

class CDTVariableFilter : private Counted<CountedClass::CDTVariableFilter> {
 public:
    // The chained test, if there is one, is asked where the function left the reference.
    explicit CDTVariableFilter(SemanticFunction function,
                               std::shared_ptr<const CDTVariableFilter> chained = nullptr)
        : function_(function), chained_(std::move(chained)) {}

    // Whether all accept. The functions may have moved the reference, whatever the answer. Without
    // a function nothing is accepted.
    bool Accepts(FIReferenceBase& reference) const;

 private:
    SemanticFunction function_;
    std::shared_ptr<const CDTVariableFilter> chained_;
};

}  // namespace fixtop
