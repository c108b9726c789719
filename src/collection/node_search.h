// SPDX-License-Identifier: Apache-2.0
#pragma once

// NodeSearch: looks for the nodes of items by the ids of their steps, in one walk from the top down
// and back, in which what items share is gone once. An id is sought as the name of a child first,
// and only when no child has it as a name with a key or as a place.

#include <functional>

#include "collection/element.h"
#include "collection/keyed_siblings.h"
#include "framework/iterator/iterator.h"

namespace fixtop {

class NodeSearch {
 public:
    // What to do with an item whose node the iterator stands on; it is lent.
    using Found = std::function<void(FICollectionElement& item, FIIterator& node)>;

    explicit NodeSearch(Found found) : found_(std::move(found)) {}
    ~NodeSearch();
    NodeSearch(const NodeSearch&) = delete;
    NodeSearch& operator=(const NodeSearch&) = delete;

    // An item to look for; all of them have one root.
    void Want(FICollectionElement& item);
    // `top` stands on the node of the root, and does so afterwards.
    void Run(FIIterator& top);

 private:
    // `node` stands on the step's node.
    void Visit(FICollectionElement& step, FIIterator& node);
    // These go from its parent to a step, when the id leads there, and come back.
    void VisitByName(FICollectionElement& step, FIIterator& node);
    void VisitByPlace(FICollectionElement& step, FIIterator& node);
    // Goes through the siblings of one name for those steps whose key they have.
    void VisitKeyed(FICollectionElement& step, const std::string& name, FIIterator& node);
    static void Forget(FICollectionElement& step);

    const Found found_;
    KeyedSiblings siblings_;
    FICollectionElement* root_ = nullptr;
};

}  // namespace fixtop
