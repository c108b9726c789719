// SPDX-License-Identifier: Apache-2.0
#pragma once

// HostObject<T>: a host object that a handle stands on, which may be gone by the next use. Get asks
// before host memory is touched: one comparison as long as the structure of no case has changed,
// and after that once whether the object of this number lives. Gone is for good.
//
// The objects of a host that gives no numbers count as living while their case does.

#include <cstdint>

#include "host/adapter.h"
#include "host/case_life.h"

namespace fixtop {

class HostObjectBase {
 public:
    // The object that was held does not live any more.
    bool IsGone() const { return !Check(); }
    // The object's own number, or, where the host gives none, its address; 0 for no object. Lasts
    // when the object is gone.
    std::uint64_t Number() const {
        return identity_ ? identity_ : reinterpret_cast<std::uintptr_t>(address_);
    }
    // The same of an object that is there; null is none.
    template <class T>
    static std::uint64_t NumberOf(const T* object) {
        const std::uint64_t identity = object ? IdentityOf(*object) : 0;
        return identity ? identity : reinterpret_cast<std::uintptr_t>(object);
    }
    // The number tells the object apart from all that ever were.
    bool IsTracked() const { return identity_ != 0; }
    const Ref<CaseLife>& Life() const { return life_; }
    // Where the object lies or lay.
    void* Address() const { return address_; }

 protected:
    HostObjectBase() = default;
    HostObjectBase(void* address, std::uint64_t identity, Ref<CaseLife> life)
        : life_(std::move(life)), address_(address), identity_(identity) {
        if (life_) revision_ = life_->Revision();
    }

    // True when the object may be touched.
    bool Check() const { return !life_ || life_->IsCurrent(revision_) || Look(); }
    void Distrust() { revision_ = 0; }

 private:
    // In place of a revision: the object is gone. No case is ever at it.
    static constexpr std::uint64_t kGone = ~std::uint64_t{0} - 1;

    bool Look() const;
    static bool IsThere(std::uint64_t identity);

    Ref<CaseLife> life_;
    void* address_ = nullptr;
    std::uint64_t identity_ = 0;
    mutable std::uint64_t revision_ = 0;
};

template <class T>
class HostObject : public HostObjectBase {
 public:
    // None, which is never gone.
    HostObject() = default;
    // One that is there now.
    HostObject(T* object, Ref<CaseLife> life)
        : HostObjectBase(object, object ? IdentityOf(*object) : 0, std::move(life)) {}
    // One that had this number when the host last told; it may be gone by now.
    HostObject(T* object, std::uint64_t identity, Ref<CaseLife> life)
        : HostObjectBase(object, identity, std::move(life)) {
        Distrust();
    }

    // Null for none and when it is gone.
    T* Get() const { return Check() ? static_cast<T*>(Address()) : nullptr; }
};

}  // namespace fixtop
