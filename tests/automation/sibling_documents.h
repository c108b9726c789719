// SPDX-License-Identifier: Apache-2.0
#pragma once

// Documents of another program, as objects of the system: of a class that may be registered under
// the name of the sibling application, and which may have a node object as a part.

#include <gtest/gtest.h>

#include "fixtop/automation.h"
#include "fixtop/fixtop.h"
#include "fixtop/ref.h"

// The system's headers come last: they rename functions of common names.
#include <windows.h>
// The component services follow the base header.
#include <objbase.h>
#include <objidl.h>
#undef GetClassName

// The system's interfaces end by their last Release and have no destructor.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

namespace fixtop {

inline constexpr char kSiblingKey[] = "Tovan.Document.13.1";
inline constexpr char kSiblingClassKey[] = "Tovan.Document.13.1\\CLSID";
inline constexpr char kSiblingClassText[] = "{11111111-2222-3333-4444-555555555555}";
inline constexpr CLSID kSiblingClass = {
    0x11111111, 0x2222, 0x3333, {0x44, 0x44, 0x55, 0x55, 0x55, 0x55, 0x55, 0x55}};
inline constexpr CLSID kOtherClass = {0x11111112, 0x2222, 0x3333, {}};

class Document final : public IPersist {
 public:
    Document(const CLSID& id, bool persists) : id_(id), persists_(persists) {}

    ::HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
        const bool has =
            IsEqualGUID(id, IID_IUnknown) || (persists_ && IsEqualGUID(id, IID_IPersist));
        *out = has ? this : nullptr;
        if (has) AddRef();
        const bool is_of_part = part && IsEqualGUID(id, AsGuid(IQSINode::kId));
        if (is_of_part) return part->QueryInterface(IQSINode::kId, out);
        return has ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    ::HRESULT STDMETHODCALLTYPE GetClassID(CLSID* id) override {
        *id = id_;
        return S_OK;
    }
    // As the module has it.
    fixtop::IUnknown* Unknown() { return reinterpret_cast<fixtop::IUnknown*>(this); }

    ULONG references = 1;
    // Its interface is one of the document's.
    Ref<fixtop::IUnknown> part;

 private:
    static const GUID& AsGuid(const InterfaceId& id) { return reinterpret_cast<const GUID&>(id); }

    const CLSID id_;
    const bool persists_;
};

// Gives the name of the sibling application a class until it ends.
class RegisteredSibling {
 public:
    RegisteredSibling() {
        EXPECT_EQ(ERROR_SUCCESS, RegSetValueA(HKEY_CLASSES_ROOT, kSiblingClassKey, REG_SZ,
                                              kSiblingClassText, sizeof kSiblingClassText - 1));
    }
    ~RegisteredSibling() {
        RegDeleteKeyA(HKEY_CLASSES_ROOT, kSiblingClassKey);
        RegDeleteKeyA(HKEY_CLASSES_ROOT, kSiblingKey);
    }
    RegisteredSibling(const RegisteredSibling&) = delete;
    RegisteredSibling& operator=(const RegisteredSibling&) = delete;
};

}  // namespace fixtop
