// SPDX-License-Identifier: Apache-2.0
#pragma once

// The thread of the automation objects: the one that made the first of those that are alive. A
// client that carries a plain pointer to another thread is refused there by every member, for the
// module takes no lock; it may count and let go.

#include "fixtop/automation/unknown.h"

namespace fixtop {

// Whether this is the thread of the objects; any is while there are none.
bool IsObjectThread() noexcept;

// The part of an object that ends it on its thread.
class ThreadBound {
 public:
    ThreadBound(const ThreadBound&) = delete;
    ThreadBound& operator=(const ThreadBound&) = delete;
    // Ends those whose last reference was let go of by another thread. On the thread of the
    // objects.
    static void EndWaiting() noexcept;

 protected:
    ThreadBound() noexcept;
    virtual ~ThreadBound();
    // Ends the object, now or when a member is called on its thread.
    void End() noexcept;

 private:
    ThreadBound* next_waiting_ = nullptr;
};

// What a member answers on this thread before it does anything.
inline HRESULT EnterMember() noexcept {
    if (!IsObjectThread()) return kResultWrongThread;
    ThreadBound::EndWaiting();
    return kResultOk;
}

}  // namespace fixtop
