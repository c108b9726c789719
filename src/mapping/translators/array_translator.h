// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "mapping/translators/translator.h"
#include "mapping/walks/element_walk.h"

namespace fixtop {

// A translator to many application nodes. Test and Apply leave the reference on the node from which
// the elements are reached, by the walk, and answer whether there can be any: false when the body
// is of no use.
class CCDMArrayTranslator : public CCDMTranslator {
 public:
    // A walk over the elements that moves the reference, which must outlive it; it stands on the
    // first element when there is one. Never null.
    virtual std::unique_ptr<CDTBase> MakeIterator(FIReferenceBase& reference) const = 0;
};

}  // namespace fixtop
