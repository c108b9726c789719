// SPDX-License-Identifier: Apache-2.0
#pragma once

// HeldNode: the inside of node objects and of attribute objects, by which one object of this module
// reaches the node of another. The two ids are the module's own and stand in no header of a client;
// what answers to them is counted by the object itself.

#include "fixtop/automation/unknown.h"
#include "fixtop/iterator.h"
#include "fixtop/ref.h"

namespace fixtop {

// Where a node object stands, where an attribute object was read.
struct HeldNode {
    // It never moves: members that lead elsewhere move a copy.
    Ref<FIIteratorBase> iterator;
};

inline constexpr InterfaceId kHeldNodeId = {
    0xd41c7a90, 0x52be, 0x4f63, {0x8a, 0x0d, 0xe3, 0x96, 0x2b, 0x58, 0x71, 0xc4}};
inline constexpr InterfaceId kHeldAttributeId = {
    0xd41c7a91, 0x52be, 0x4f63, {0x8a, 0x0d, 0xe3, 0x96, 0x2b, 0x58, 0x71, 0xc4}};

// The node of an object that answers to the id; what it answers to the question else.
HRESULT FindHeldNode(IUnknown* object, const InterfaceId& id, Ref<FIIteratorBase>& node);

}  // namespace fixtop
