// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "automation/held_node.h"
#include "automation/node_iterator.h"
#include "automation/object.h"
#include "fixtop/automation/node.h"

namespace fixtop {

// The members that both families of node objects have. Nodes to which they lead are of the family
// of the node.
template <class Interface>
class NodeObject : public AutomationObject<Interface>, protected HeldNode {
 public:
    HRESULT FIXTOP_MEMBER GetChild(const char* path, IQSINode** child) override;
    HRESULT FIXTOP_MEMBER GetChildren(IQSINodeIterator** children) override;
    HRESULT FIXTOP_MEMBER GetAttribute(const char* name, IQSIAttribute** attribute) override;
    HRESULT FIXTOP_MEMBER GetAttributes(IQSIAttributeIterator** attributes) override;
    HRESULT FIXTOP_MEMBER GetPath(char** path) override;
    HRESULT FIXTOP_MEMBER GetParent(IQSINode** parent) override;
    HRESULT FIXTOP_MEMBER NewCollection(IQSICollection** collection) override;
    HRESULT FIXTOP_MEMBER GetAltPath(const char* path, IQSICollection** collection) override;
    HRESULT FIXTOP_MEMBER GetDocument(void* identity, void** document) override;
    HRESULT FIXTOP_MEMBER SetVariable(const char* name, const char* value) override;
    HRESULT FIXTOP_MEMBER GetFullName(char** name) override;
    HRESULT FIXTOP_MEMBER GetClassName(char** name) override;

 protected:
    // `place` is shared and not moved any more.
    NodeObject(Ref<FIIteratorBase> place, NodeMaker make_node);
    void* Find(const InterfaceId& id) override;
    // To be moved.
    Ref<FIIteratorBase> Copy() const { return Ref<FIIteratorBase>::Adopt(iterator->Copy()); }

 private:
    const NodeMaker make_node_;
};

}  // namespace fixtop
