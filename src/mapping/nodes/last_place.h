// SPDX-License-Identifier: Apache-2.0
#pragma once

// LastPlace: where a path led last from the nodes of one entry. The next attribute of the entry is
// mostly read when the last one has been dropped, and its path often begins alike: then the same
// reference is led on from where the paths part, in place of a copy that begins at the node.
//
// What was passed on the way is remembered as long as the entry at most, and while no structure has
// changed.

#include "fixtop/ref.h"
#include "framework/reference/reference.h"
#include "mapping/translators/scalar_translators.h"

namespace fixtop {

class LastPlace {
 public:
    // A reference that a path led from `node`, which is one of the entry's; null when it leads
    // nowhere. `translator` sets no variables.
    Ref<FIReference> Lead(FIReference& node, const CCDMMapTranslator& translator);

 private:
    Ref<FIReference> Take(const FIReference& node);

    Ref<FIReference> place_;  // null for none
    const FIReference* node_ = nullptr;
    const PathStep* path_ = nullptr;  // by which it was led
    int node_depth_ = 0;
    int depth_ = 0;
};

}  // namespace fixtop
