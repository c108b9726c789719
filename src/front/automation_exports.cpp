// SPDX-License-Identifier: Apache-2.0
// The makers of automation objects, which the front finds by name.

#include "automation/com/document/document_node.h"
#include "automation/com/document/sibling_document.h"
#include "automation/object_thread.h"
#include "automation/paste.h"
#include "automation/q_node.h"
#include "automation/v_node.h"
#include "diagnostics/instance_counts.h"
#include "diagnostics/memory_guard.h"
#include "fixtop/fixtop.h"
#include "front/assembly.h"
#include "front/documents.h"

namespace fixtop {

namespace {

// Both places get the one reference. On another thread than that of the objects nothing is made.
template <class Make>
void* Handed(void** out, Make make) {
    void* const made =
        IsObjectThread() ? memory::Or(nullptr, [&]() -> void* { return make(); }) : nullptr;
    if (out) *out = made;
    return made;
}

void* MakeNode(FIIteratorBase* place, void** out, NodeMaker make) {
    return Handed(out, [=] { return place ? make(Ref<FIIteratorBase>::Share(place)) : nullptr; });
}

void* FindDocument(DocumentFamily family, void* session, const void* identity, void** out) {
    return Handed(out, [=] { return TheDocuments(family).Find(session, identity); });
}

void* MakeDocument(DocumentFamily family, FIEntry* top, void* session, const void* identity,
                   void** out) {
    return Handed(out, [=]() -> IQSIDocument* {
        return top ? TheDocuments(family).Make(*top, session, identity) : nullptr;
    });
}

}  // namespace

void* MakeQSINode(FIIteratorBase* place, void** out) {
    return MakeNode(place, out, CQSINode::Make);
}

void* GetTopVNode(FIIteratorBase* place, void** out) {
    return MakeNode(place, out, CQSVNode::Make);
}

void* FindDocumentAgg(void* session, const void* identity, void** out) {
    return FindDocument(DocumentFamily::kQ, session, identity, out);
}

void* FindVDocumentAgg(void* session, const void* identity, void** out) {
    return FindDocument(DocumentFamily::kV, session, identity, out);
}

void* MakeDocumentAgg(FIEntry* top, void* session, const void* identity, void** out) {
    return MakeDocument(DocumentFamily::kQ, top, session, identity, out);
}

void* MakeVDocumentAgg(FIEntry* top, void* session, const void* identity, void** out) {
    return MakeDocument(DocumentFamily::kV, top, session, identity, out);
}

HRESULT FixtopPasteCollection(IUnknown* node, const char* text, int size,
                              IQSICollection** collection) {
    return PasteText(node, text, size, collection);
}

HRESULT PasteCollection(IUnknown* node, IQSICollection** collection) {
    return PasteFromClipboard(node, collection);
}

HRESULT FixtopMakeNodeInDocument(void* session, IUnknown* outer, IUnknown* document,
                                 IUnknown** part) {
    return MakeDocumentNode(
        outer, document,
        [=](bool as_host_shows_it) { return AssemblePlace(session, as_host_shows_it); }, part);
}

HRESULT FixtopReadClipboard(FIValue& text) {
    text.Clear();
    std::string read;
    const HRESULT result = ReadClipboard(read);
    if (result != kResultOk) return result;
    return memory::Or(kResultOutOfMemory, [&] {
        text.SetText(read);
        return kResultOk;
    });
}

HRESULT FixtopLoadCollection(IUnknown* node, const char* text, int size,
                             IQSICollection** collection) {
    return LoadCollection(node, text, size, collection);
}

HRESULT IsSiblingDocument(IUnknown* document) {
    return CheckSiblingDocument(document);
}

void QSIPrint(int indent) {
    memory::OrNothing([=] { ReportInstances(CountGroup::kAutomation, indent); });
}

}  // namespace fixtop
