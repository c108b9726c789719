// SPDX-License-Identifier: Apache-2.0
#pragma once

// IQSINode: a place in the tree. It never moves: what leads elsewhere is another node. Reads of a
// node that is gone tell it as they do in the tree, by the texts "Node invalid" and "Node deleted".

#include "fixtop/automation/unknown.h"

// One of the system's headers has a macro of this name.
#pragma push_macro("GetClassName")
#undef GetClassName

namespace fixtop::inline FI {

struct IQSIAttribute;
struct IQSIAttributeIterator;
struct IQSICollection;
struct IQSINodeIterator;

struct IQSINode : IUnknown {
    static constexpr InterfaceId kId = {
        0x6f0b1c51, 0x3a47, 0x4d0e, {0x9b, 0x21, 0x5c, 0x7e, 0x10, 0x64, 0xd8, 0x02}};

    // The node to which a path leads from here. All that hand out an object answer kResultFalse
    // where there is no such thing.
    virtual HRESULT FIXTOP_MEMBER GetChild(const char* path, IQSINode** child) = 0;
    // On the first child; kResultFalse for a leaf.
    virtual HRESULT FIXTOP_MEMBER GetChildren(IQSINodeIterator** children) = 0;
    // kResultFalse when its value is NULL.
    virtual HRESULT FIXTOP_MEMBER GetAttribute(const char* name, IQSIAttribute** attribute) = 0;
    virtual HRESULT FIXTOP_MEMBER GetAttributes(IQSIAttributeIterator** attributes) = 0;
    // From the root, in task memory; kResultFalse where the node is gone.
    virtual HRESULT FIXTOP_MEMBER GetPath(char** path) = 0;
    // The parent of the top is the top.
    virtual HRESULT FIXTOP_MEMBER GetParent(IQSINode** parent) = 0;
    // A new one that holds this node.
    virtual HRESULT FIXTOP_MEMBER NewCollection(IQSICollection** collection) = 0;
    // A new one of all nodes to which a path leads, which may be none; kResultFalse for a text that
    // is no path.
    virtual HRESULT FIXTOP_MEMBER GetAltPath(const char* path, IQSICollection** collection) = 0;
    // No document is handed out here: null and kResultNoInterface.
    virtual HRESULT FIXTOP_MEMBER GetDocument(void* identity, void** document) = 0;
    // A variable that paths from here may use; the nodes that are asked for later have it, too.
    virtual HRESULT FIXTOP_MEMBER SetVariable(const char* name, const char* value) = 0;
    // The path, cut to 1023 bytes, in task memory.
    virtual HRESULT FIXTOP_MEMBER GetFullName(char** name) = 0;
    // The class of a neutral node, the type of any other, cut likewise; kResultFalse without.
    virtual HRESULT FIXTOP_MEMBER GetClassName(char** name) = 0;
    // What a caller has written for whom that macro stands; none of the table.
    HRESULT GetClassNameA(char** name) { return GetClassName(name); }
    HRESULT GetClassNameW(char** name) { return GetClassName(name); }

 protected:
    ~IQSINode() = default;
};

}  // namespace fixtop::inline FI

#pragma pop_macro("GetClassName")
