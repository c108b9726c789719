// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the steps of a collection are called. A node with a key is its name and key as in a path,
// "Stream(Raw Gas)"; any other is what its parent lists it under, and one to which neither leads,
// since a sibling before it is called the same, is its place among its siblings.

#include <string>
#include <vector>

#include "collection/element.h"
#include "framework/iterator/iterator.h"

namespace fixtop {

class KeyedSiblings;

struct StepId {
    FIValue text;
    FICollectionElement::Sought sought = FICollectionElement::Sought::kUnknown;
};

// Of a node below the root; NULL when it has no name there.
StepId IdOf(FIIterator& node, KeyedSiblings& siblings);
// The same by its name, NULL where no name leads to it.
StepId NameIdOf(FIIterator& node, KeyedSiblings& siblings);
bool IsPlaceId(std::string_view id);
// Whether all of them can be sought.
bool HaveTexts(const std::vector<StepId>& ids);
// Whether the node is still called as the step was found or made, and the step still leads to it: a
// sibling that comes before it may be called so by now.
bool HasStepId(const FICollectionElement& step, FIIterator& node, KeyedSiblings& siblings);
// Of a node with a key, NULL for any other.
FIValue KeyedIdOf(FIIterator& node);
// The name in front of the key of an id that may be a name and a key; empty when it is none.
std::string NameOfKeyed(std::string_view id);
// The place that an id begins with; -1 for none.
int PlaceOf(std::string_view id);
// A step as it is written in a path.
std::string WrittenStep(const FICollectionElement& step);

}  // namespace fixtop
