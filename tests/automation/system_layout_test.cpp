// SPDX-License-Identifier: Apache-2.0
// The objects through the system's own declarations, as clients see them that were compiled with
// its headers alone.

#include "automation/objects.h"
#include "automation/script_nodes.h"

// The system's headers come last: they rename functions of common names.
#include <windows.h>
// The component services follow the base header.
#include <objbase.h>
#include <unknwn.h>

namespace fixtop {

namespace {

class SystemLayout : public testing::Test {
 protected:
    static const GUID& AsGuid(const InterfaceId& id) { return reinterpret_cast<const GUID&>(id); }

    ScriptNode root_{"Root"};
    Ref<IQSINode> node_ = NodeAt(root_);
    ::IUnknown* const unknown_ = reinterpret_cast<::IUnknown*>(node_.Get());
};

TEST_F(SystemLayout, id_of_unknown_is_the_systems) {
    EXPECT_TRUE(IsEqualGUID(AsGuid(FI::IUnknown::kId), IID_IUnknown));
    EXPECT_FALSE(IsEqualGUID(AsGuid(IQSINode::kId), IID_IUnknown));
}

TEST_F(SystemLayout, objects_are_held_as_the_systems) {
    void* out = nullptr;
    ASSERT_EQ(S_OK, unknown_->QueryInterface(IID_IUnknown, &out));
    EXPECT_EQ(node_.Get(), out);
    EXPECT_EQ(3u, unknown_->AddRef());
    EXPECT_EQ(2u, unknown_->Release());
    EXPECT_EQ(1u, static_cast<::IUnknown*>(out)->Release());
    EXPECT_EQ(E_NOINTERFACE, unknown_->QueryInterface(IID_IDispatch, &out));
    EXPECT_EQ(nullptr, out);
    EXPECT_EQ(E_POINTER, unknown_->QueryInterface(IID_IUnknown, nullptr));
}

TEST_F(SystemLayout, class_name_is_reached_in_spite_of_the_systems_macro) {
    root_.Set("type", "Real");
    EXPECT_EQ("Real", TakeText([&](char** out) { return node_->GetClassName(out); }));
}

TEST_F(SystemLayout, texts_are_freed_by_the_system) {
    char* path = nullptr;
    ASSERT_EQ(S_OK, CallSlot(unknown_, 7, &path));
    EXPECT_STREQ("Root", path);
    CoTaskMemFree(path);
}

}  // namespace

}  // namespace fixtop
