// SPDX-License-Identifier: Apache-2.0
#include "automation/com/document/document_node_windows.h"

#include "automation/com/document/document_node.h"
#include "automation/com/document/document_node_factory_windows.h"
#include "automation/com/document/sibling_document.h"
#include "automation/member.h"

namespace fixtop {

namespace {

Ref<IUnknown> IdentityOf(IUnknown& object) {
    return TakeFromSystem<IUnknown>([&](IUnknown** out) {
        return object.QueryInterface(IUnknown::kId, reinterpret_cast<void**>(out));
    });
}

}  // namespace

HRESULT DocumentNode::QueryInterface(const InterfaceId& id, void** out) {
    if (!out) return kResultPointer;
    *out = nullptr;
    return RunMember([&] {
        if (id == IUnknown::kId || id == kId) {
            AddRef();
            *out = this;
        } else if (id == IQSINode::kId) {
            face_.AddRef();
            *out = static_cast<IQSINode*>(&face_);
        }
        return *out ? kResultOk : kResultNoInterface;
    });
}

std::uint32_t DocumentNode::Release() {
    const std::uint32_t left = --references_;
    if (left == 0) End();
    return left;
}

void DocumentNode::TakeDocument(IUnknown* document) {
    if (!document) return;
    is_of_sibling_ = CheckSiblingDocument(document) == kResultOk;
    if (!face_.IsPartOf(*document)) document_ = Ref<IUnknown>::Share(document);
}

void DocumentNode::Stand(Ref<FIIteratorBase> place) {
    place_ = Ref<IQSINode>::Adopt(CQSINode::Make(std::move(place)));
}

// ---- What clients hold ----

bool DocumentNode::Face::IsPartOf(IUnknown& object) const {
    return IdentityOf(object).Get() == IdentityOf(outer_).Get();
}

HRESULT DocumentNode::Face::QueryInterface(const InterfaceId& id, void** out) {
    const bool is_own = out && node_.place_ && id == kHeldNodeId;
    if (!is_own) return outer_.QueryInterface(id, out);
    // Whoever asks lets go of it by this object.
    const HRESULT found = node_.place_->QueryInterface(id, out);
    if (found != kResultOk) return found;
    AddRef();
    node_.place_->Release();
    return kResultOk;
}

template <class Member, class... Arguments>
HRESULT DocumentNode::Face::Forward(Member member, Arguments... arguments) {
    return node_.place_ ? (node_.place_.Get()->*member)(arguments...) : kResultFail;
}

HRESULT DocumentNode::Face::GetChild(const char* path, IQSINode** child) {
    return Forward(&IQSINode::GetChild, path, child);
}

HRESULT DocumentNode::Face::GetChildren(IQSINodeIterator** children) {
    return Forward(&IQSINode::GetChildren, children);
}

HRESULT DocumentNode::Face::GetAttribute(const char* name, IQSIAttribute** attribute) {
    return Forward(&IQSINode::GetAttribute, name, attribute);
}

HRESULT DocumentNode::Face::GetAttributes(IQSIAttributeIterator** attributes) {
    return Forward(&IQSINode::GetAttributes, attributes);
}

HRESULT DocumentNode::Face::GetPath(char** path) {
    return Forward(&IQSINode::GetPath, path);
}

HRESULT DocumentNode::Face::GetParent(IQSINode** parent) {
    return Forward(&IQSINode::GetParent, parent);
}

HRESULT DocumentNode::Face::NewCollection(IQSICollection** collection) {
    return Forward(&IQSINode::NewCollection, collection);
}

HRESULT DocumentNode::Face::GetAltPath(const char* path, IQSICollection** collection) {
    return Forward(&IQSINode::GetAltPath, path, collection);
}

HRESULT DocumentNode::Face::GetDocument(void* identity, void** document) {
    return Forward(&IQSINode::GetDocument, identity, document);
}

HRESULT DocumentNode::Face::SetVariable(const char* name, const char* value) {
    return Forward(&IQSINode::SetVariable, name, value);
}

HRESULT DocumentNode::Face::GetFullName(char** name) {
    return Forward(&IQSINode::GetFullName, name);
}

HRESULT DocumentNode::Face::GetClassName(char** name) {
    return Forward(&IQSINode::GetClassName, name);
}

// ---- Making one ----

// The system and the document are called outside of the module's own work.
HRESULT MakeDocumentNode(IUnknown* outer, IUnknown* document, const DocumentPlace& place,
                         IUnknown** part) {
    if (!part) return kResultPointer;
    *part = nullptr;
    const HRESULT entered = EnterMember();
    if (entered != kResultOk) return entered;
    Ref<IUnknown> made;
    const HRESULT created = CreateDocumentNode(outer, made);
    if (created != kResultOk) return created;
    const auto node = TakeFromSystem<DocumentNode>([&](DocumentNode** out) {
        return made->QueryInterface(DocumentNode::kId, reinterpret_cast<void**>(out));
    });
    if (!node) return kResultNoInterface;
    node->TakeDocument(document);
    const HRESULT stands = RunMember([&] {
        Ref<FIIteratorBase> top = place(node->IsOfSibling());
        if (!top) return kResultFalse;
        node->Stand(std::move(top));
        return kResultOk;
    });
    if (stands == kResultOk) *part = made.Detach();
    return stands;
}

}  // namespace fixtop
