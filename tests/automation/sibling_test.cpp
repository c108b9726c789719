// SPDX-License-Identifier: Apache-2.0
// Documents of the sibling application, told by the class that is registered under its name.

#include "automation/sibling_documents.h"

namespace fixtop {

namespace {

class Sibling : public testing::Test {
 protected:
    void SetUp() override {
        ASSERT_EQ(S_OK, CoInitialize(nullptr));
        HKEY key = nullptr;
        ASSERT_NE(ERROR_SUCCESS, RegOpenKeyA(HKEY_CLASSES_ROOT, kSiblingKey, &key))
            << "a sibling is installed";
    }
    void TearDown() override { CoUninitialize(); }
    static HRESULT Check(Document& document) {
        const HRESULT result = IsSiblingDocument(document.Unknown());
        EXPECT_EQ(1u, document.references);
        return result;
    }

    Document document_{kSiblingClass, true};
    Document other_{kOtherClass, true};
    Document mute_{kSiblingClass, false};
};

TEST_F(Sibling, document_of_the_registered_class_is_one) {
    const RegisteredSibling registered;
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
