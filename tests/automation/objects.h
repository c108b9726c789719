// SPDX-License-Identifier: Apache-2.0
#pragma once

// What tests of automation objects do with members: objects and texts that are handed out are held
// and let go of, and members are called at their place in the table, as a client compiled elsewhere
// calls them.

#include <gtest/gtest.h>

#include <string>

#include "automation/task_memory.h"
#include "fixtop/automation.h"
#include "fixtop/ref.h"

namespace fixtop {

// Nothing can be at this address: that a member wrote null over it is seen.
template <class T>
T* NoPointer() {
    static char nothing;
    return reinterpret_cast<T*>(&nothing);
}

// The object of a member that is to succeed.
template <class T, class Call>
Ref<T> Take(Call call) {
    T* out = nullptr;
    EXPECT_EQ(kResultOk, call(&out));
    EXPECT_NE(nullptr, out);
    return Ref<T>::Adopt(out);
}

// The result of a member that is to hand out nothing.
template <class T, class Call>
HRESULT Refused(Call call) {
    T* out = NoPointer<T>();
    const HRESULT result = call(&out);
    EXPECT_EQ(nullptr, out);
    return result;
}

// The text of a member that is to succeed.
template <class Call>
std::string TakeText(Call call) {
    char* text = nullptr;
    EXPECT_EQ(kResultOk, call(&text));
    EXPECT_NE(nullptr, text);
    const std::string taken = text ? text : "(null)";
    FreeAsClient(text);
    return taken;
}

// "" when the store is done, else its message.
template <class Call>
std::string Stored(Call call) {
    char* error = NoPointer<char>();
    const HRESULT result = call(&error);
    EXPECT_EQ(error ? kResultFalse : kResultOk, result);
    const std::string message = error ? error : "";
    FreeAsClient(error);
    return message;
}

template <class T, class Call>
T TakeNumber(Call call) {
    T number = T();
    EXPECT_EQ(kResultOk, call(&number));
    return number;
}

inline Ref<IQSINode> ChildOf(IQSINode& node, const char* path) {
    return Take<IQSINode>([&](IQSINode** out) { return node.GetChild(path, out); });
}

inline std::string PathOf(IQSINode& node) {
    return TakeText([&](char** out) { return node.GetPath(out); });
}

// An attribute as text; "(none)" when it is refused.
inline std::string ReadOf(IQSINode& node, const char* name) {
    IQSIAttribute* out = nullptr;
    if (node.GetAttribute(name, &out) != kResultOk) return "(none)";
    const auto attribute = Ref<IQSIAttribute>::Adopt(out);
    return TakeText([&](char** text) { return attribute->GetString(text); });
}

template <class T>
std::uint32_t CountOf(T& object) {
    object.AddRef();
    return object.Release();
}

// The member at a place of the object's table, counted from 0.
template <class... Arguments>
HRESULT CallSlot(void* object, int slot, Arguments... arguments) {
    using Member = HRESULT(FIXTOP_MEMBER*)(void*, Arguments...);
    void** const table = *static_cast<void***>(object);
    return reinterpret_cast<Member>(table[slot])(object, arguments...);
}

}  // namespace fixtop
