// SPDX-License-Identifier: Apache-2.0
// Documents of the sibling application, told by the class that is registered under its name.

#include <gtest/gtest.h>

#include "fixtop/fixtop.h"

// The system's headers come last: they rename functions of common names.
#include <windows.h>
// The component services follow the base header.
#include <objbase.h>
#include <objidl.h>

// The system's interfaces end by their last Release and have no destructor.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

namespace fixtop {

namespace {

constexpr char kKey[] = "Tovan.Document.13.1";
constexpr char kClassKey[] = "Tovan.Document.13.1\\CLSID";
constexpr char kClassText[] = "{11111111-2222-3333-4444-555555555555}";
constexpr CLSID kClass = {
    0x11111111, 0x2222, 0x3333, {0x44, 0x44, 0x55, 0x55, 0x55, 0x55, 0x55, 0x55}};

class Document final : public IPersist {
 public:
    Document(const CLSID& id, bool persists) : id_(id), persists_(persists) {}

    ::HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
        const bool has =
            IsEqualGUID(id, IID_IUnknown) || (persists_ && IsEqualGUID(id, IID_IPersist));
        *out = has ? this : nullptr;
        if (has) AddRef();
        return has ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    ::HRESULT STDMETHODCALLTYPE GetClassID(CLSID* id) override {
        *id = id_;
        return S_OK;
    }

    ULONG references = 1;

 private:
    const CLSID id_;
    const bool persists_;
};

class Sibling : public testing::Test {
 protected:
    void SetUp() override {
        ASSERT_EQ(S_OK, CoInitialize(nullptr));
        HKEY key = nullptr;
        ASSERT_NE(ERROR_SUCCESS, RegOpenKeyA(HKEY_CLASSES_ROOT, kKey, &key))
            << "a sibling is installed";
    }
    void TearDown() override {
        RegDeleteKeyA(HKEY_CLASSES_ROOT, kClassKey);
        RegDeleteKeyA(HKEY_CLASSES_ROOT, kKey);
        CoUninitialize();
    }
    static void Register() {
        ASSERT_EQ(ERROR_SUCCESS, RegSetValueA(HKEY_CLASSES_ROOT, kClassKey, REG_SZ, kClassText,
                                              sizeof kClassText - 1));
    }
    static HRESULT Check(Document& document) {
        const HRESULT result = IsSiblingDocument(reinterpret_cast<IUnknown*>(&document));
        EXPECT_EQ(1u, document.references);
        return result;
    }

    Document document_{kClass, true};
    Document other_{CLSID{0x11111112, 0x2222, 0x3333, {}}, true};
    Document mute_{kClass, false};
};

TEST_F(Sibling, document_of_the_registered_class_is_one) {
    Register();
    EXPECT_EQ(kResultOk, Check(document_));
    EXPECT_EQ(kResultFalse, Check(other_));
    EXPECT_EQ(kResultFalse, Check(mute_));
    EXPECT_EQ(kResultPointer, IsSiblingDocument(nullptr));
}

TEST_F(Sibling, without_the_sibling_there_is_none) {
    EXPECT_EQ(kResultFalse, Check(document_));
}

}  // namespace

}  // namespace fixtop
