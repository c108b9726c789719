// SPDX-License-Identifier: Apache-2.0
// Programs that only parse paths are linked without the evaluation, which needs iterators. No step
// is walked in them; a call of these two ends the program.

#include <cstdlib>

#include "path/path_step.h"

namespace fixtop {

void PathStep::ResolveName(FIIteratorBase&, FIValue&) const {
    std::abort();
}

int PathStep::ResolveCount(FIIteratorBase&) const {
    std::abort();
}

}  // namespace fixtop
