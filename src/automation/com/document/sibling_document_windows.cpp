// SPDX-License-Identifier: Apache-2.0
#include "automation/com/document/sibling_document.h"

#include "automation/com/system_types_windows.h"
#include "automation/object_thread.h"
// The component services follow the base header.
#include <objbase.h>
#include <objidl.h>

namespace fixtop {

namespace {

constexpr wchar_t kSibling[] = L"Tovan.Document.13.1";
constexpr InterfaceId kPersistId = {0x0000010c, 0, 0, {0xc0, 0, 0, 0, 0, 0, 0, 0x46}};

bool ClassOf(IUnknown& document, CLSID& id) {
    const auto persist = TakeFromSystem<IPersist>([&](IPersist** out) {
        return document.QueryInterface(kPersistId, reinterpret_cast<void**>(out));
    });
    return persist && SUCCEEDED(persist->GetClassID(&id));
}

}  // namespace

HRESULT CheckSiblingDocument(IUnknown* document) {
    if (!document) return kResultPointer;
    const HRESULT entered = EnterMember();
    if (entered != kResultOk) return entered;
    CLSID own = {}, sibling = {};
    const bool is_sibling = ClassOf(*document, own) &&
                            SUCCEEDED(CLSIDFromProgID(kSibling, &sibling)) &&
                            IsEqualGUID(own, sibling);
    return is_sibling ? kResultOk : kResultFalse;
}

}  // namespace fixtop
