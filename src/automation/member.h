// SPDX-License-Identifier: Apache-2.0
#pragma once

// The frame of a member: what it answers on another thread and when memory runs out, and how it
// hands something out only when all went well.

#include "automation/object_thread.h"
#include "automation/task_text.h"
#include "diagnostics/memory_guard.h"
#include "fixtop/automation/unknown.h"
#include "fixtop/ref.h"

namespace fixtop {

// The result of `work`, or that this is not the thread of the objects, or that memory ran out. All
// that a member reads of the module it reads in here.
template <class Work>
HRESULT RunMember(Work work) {
    const HRESULT entered = EnterMember();
    if (entered != kResultOk) return entered;
    HRESULT result = kResultOutOfMemory;
    const bool done = memory::Or(false, [&] {
        result = work();
        return true;
    });
    return done ? result : kResultOutOfMemory;
}

// Hands out the object that `make` answers with one reference; kResultFalse for null.
template <class T, class Make>
HRESULT HandOutObject(T** out, Make make) {
    if (!out) return kResultPointer;
    *out = nullptr;
    Ref<T> made;
    const HRESULT result = RunMember([&] {
        made = Ref<T>::Adopt(make());
        return made ? kResultOk : kResultFalse;
    });
    if (result == kResultOk) *out = made.Detach();
    return result;
}

// Hands out the text of the value that `read` reads; kResultFalse for NULL.
template <class Read>
HRESULT HandOutText(char** out, Read read) {
    if (!out) return kResultPointer;
    *out = nullptr;
    TaskText text;
    const HRESULT result = RunMember([&] {
        FIValue value;
        read(value);
        if (value.IsNull()) return kResultFalse;
        text = ToTaskText(value);
        return kResultOk;
    });
    if (result == kResultOk) *out = text.release();
    return result;
}

// Hands out the message that a store leaves, as kResultFalse.
template <class Store>
HRESULT HandOutMessage(char** error, Store store) {
    const HRESULT result = HandOutText(error, store);
    if (result == kResultOk) return kResultFalse;
    return result == kResultFalse ? kResultOk : result;
}

// Puts what `read` answers into `out`, or T().
template <class T, class Read>
HRESULT HandOutNumber(T* out, Read read) {
    if (!out) return kResultPointer;
    *out = T();
    T number = T();
    const HRESULT result = RunMember([&] {
        number = read();
        return kResultOk;
    });
    if (result == kResultOk) *out = number;
    return result;
}

// A member that reads texts of the caller: kResultPointer when one is null, with `out` null.
template <class T, class... Texts>
bool LacksText(T** out, Texts... texts) {
    const bool lacks = (... || (texts == nullptr));
    if (lacks && out) *out = nullptr;
    return lacks;
}

}  // namespace fixtop
