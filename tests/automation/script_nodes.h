// SPDX-License-Identifier: Apache-2.0
#pragma once

// Node objects on scripted trees.

#include "automation/q_node.h"
#include "automation/v_node.h"
#include "support/scripted_tree.h"

namespace fixtop {

inline Ref<FIIteratorBase> PlaceAt(ScriptNode& root) {
    return Ref<FIIteratorBase>::Adopt(root.Iterate().Detach());
}

inline Ref<IQSINode> NodeAt(ScriptNode& root) {
    return Ref<IQSINode>::Adopt(CQSINode::Make(PlaceAt(root)));
}

inline Ref<IQSVNode> VNodeAt(ScriptNode& root) {
    return Ref<IQSVNode>::Adopt(static_cast<IQSVNode*>(CQSVNode::Make(PlaceAt(root))));
}

}  // namespace fixtop
