// SPDX-License-Identifier: Apache-2.0
#pragma once

// KeyedSiblings: which nodes of a list are the first with their name and key, and so found by them.
// The list that was asked about last is remembered as long as its case does not change.

#include <string>
#include <unordered_map>

#include "framework/iterator/iterator.h"

namespace fixtop {

class KeyedSiblings {
 public:
    // `id` is the name and key of the node.
    bool IsFirst(FIIterator& node, const FIValue& id);
    void Forget() { *this = KeyedSiblings(); }

 private:
    bool IsOfList(FIIterator& node) const;
    void Read(FIIterator& node);

    // Stands on the list.
    Ref<FIIterator> list_;
    std::uint64_t revision_ = 0;
    std::unordered_map<std::string, int> counts_;
};

}  // namespace fixtop
