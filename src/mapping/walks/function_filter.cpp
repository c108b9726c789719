// SPDX-License-Identifier: Apache-2.0
#include "mapping/walks/function_filter.h"

#include "mapping/translators/reference_move.h"

namespace fixtop {

bool CDTVariableFilter::Accepts(FIReferenceBase& reference) const {
    const bool accepted =
        function_ != nullptr &&
        MoveReference(reference, [this](FIIteratorBase& it) { return function_(&it, 1); });
    return accepted && (chained_ == nullptr || chained_->Accepts(reference));
}

}  // namespace fixtop
