// SPDX-License-Identifier: Apache-2.0
#pragma once

// DocumentNode: a node object that can be a part of another object. It is made empty, as the system
// makes objects, and then put where it stands.

#include "automation/com/system_types_windows.h"
#include "automation/object_thread.h"
#include "automation/q_node.h"

namespace fixtop {

class DocumentNode final : public IUnknown, private ThreadBound {
 public:
    // The module's own: of no header of a client.
    static constexpr InterfaceId kId = {
        0xd41c7a92, 0x52be, 0x4f63, {0x8a, 0x0d, 0xe3, 0x96, 0x2b, 0x58, 0x71, 0xc4}};

    // Null for an object of its own.
    explicit DocumentNode(IUnknown* outer) : face_(*this, outer ? *outer : *this) {}

    // Answers for itself: IUnknown, IQSINode, and the own id.
    HRESULT FIXTOP_MEMBER QueryInterface(const InterfaceId& id, void** out) override;
    std::uint32_t FIXTOP_MEMBER AddRef() override { return ++references_; }
    std::uint32_t FIXTOP_MEMBER Release() override;

    // Holds the document, unless that is what it is a part of, and remembers whether it is one of
    // the sibling application.
    void TakeDocument(IUnknown* document);
    bool IsOfSibling() const { return is_of_sibling_; }
    void Stand(Ref<FIIteratorBase> place);

 private:
    // What clients hold. It counts for the object of which this is a part, and all but the module's
    // own ids are questions to that.
    class Face final : public IQSINode {
     public:
        Face(DocumentNode& node, IUnknown& outer) : node_(node), outer_(outer) {}
        bool IsPartOf(IUnknown& object) const;

        HRESULT FIXTOP_MEMBER QueryInterface(const InterfaceId& id, void** out) override;
        std::uint32_t FIXTOP_MEMBER AddRef() override { return outer_.AddRef(); }
        std::uint32_t FIXTOP_MEMBER Release() override { return outer_.Release(); }

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

     private:
        template <class Member, class... Arguments>
        HRESULT Forward(Member member, Arguments... arguments);

        DocumentNode& node_;
        IUnknown& outer_;
    };

    ~DocumentNode() override = default;

    Face face_;
    std::atomic<std::uint32_t> references_ = 1;
    Ref<IUnknown> document_;
    bool is_of_sibling_ = false;
    // Null until it stands somewhere.
    Ref<IQSINode> place_;
};

}  // namespace fixtop
