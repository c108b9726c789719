// SPDX-License-Identifier: Apache-2.0
#pragma once

// AutomationObject<Interface>: the count, the interfaces and the thread of an automation object. It
// starts at one reference, which belongs to whoever makes it, and ends by the last Release.

#include <atomic>

#include "automation/object_thread.h"
#include "fixtop/automation/unknown.h"

namespace fixtop {

template <class Interface>
class AutomationObject : public Interface, private ThreadBound {
 public:
    HRESULT FIXTOP_MEMBER QueryInterface(const InterfaceId& id, void** out) final {
        if (!out) return kResultPointer;
        *out = nullptr;
        const HRESULT entered = EnterMember();
        if (entered != kResultOk) return entered;
        *out = Find(id);
        if (!*out) return kResultNoInterface;
        AddRef();
        return kResultOk;
    }
    std::uint32_t FIXTOP_MEMBER AddRef() final { return ++references_; }
    std::uint32_t FIXTOP_MEMBER Release() final {
        const std::uint32_t left = --references_;
        if (left == 0) End();
        return left;
    }

 protected:
    AutomationObject() = default;
    // Behind the members of the interface, where no client looks.
    ~AutomationObject() override = default;
    // Not counted; null when there is none.
    virtual void* Find(const InterfaceId& id) {
        const bool is_known = id == IUnknown::kId || id == Interface::kId;
        return is_known ? static_cast<Interface*>(this) : nullptr;
    }

 private:
    std::atomic<std::uint32_t> references_ = 1;
};

}  // namespace fixtop
