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

// The part of such a handle that is its own: where the object lies and when it was last known to
// live. Who has the record of the case anyway holds this alone.
class HostPlace {
 public:
    HostPlace() = default;
    HostPlace(void* address, std::uint64_t identity) : address_(address), identity_(identity) {}
    // Of an object that is there now.
    HostPlace(void* address, std::uint64_t identity, const CaseLife& life)
        : HostPlace(address, identity) {
        revision_ = life.Revision();
    }

    // True when the object may be touched.
    bool Check(CaseLife& life) const { return life.IsCurrent(revision_) || Look(life); }
    // The object's own number, or, where the host gives none, its address; 0 for no object. Lasts
    // when the object is gone.
    std::uint64_t Number() const {
        return identity_ ? identity_ : reinterpret_cast<std::uintptr_t>(address_);
    }
    // The number tells the object apart from all that ever were.
    bool IsTracked() const { return identity_ != 0; }
    // 0 where the host gives none.
    std::uint64_t Identity() const { return identity_; }
    // Where the object lies or lay.
    void* Address() const { return address_; }

 private:
    // In place of a revision: the object is gone. No case is ever at it.
    static constexpr std::uint64_t kGone = ~std::uint64_t{0} - 1;

    bool Look(CaseLife& life) const;
    static bool IsThere(std::uint64_t identity);

    void* address_ = nullptr;
    std::uint64_t identity_ = 0;
    mutable std::uint64_t revision_ = 0;
};

class HostObjectBase {
 public:
    // The object that was held does not live any more.
    bool IsGone() const { return !Check(); }
    std::uint64_t Number() const { return place_.Number(); }
    // The same of an object that is there; null is none.
    template <class T>
    static std::uint64_t NumberOf(const T* object) {
        const std::uint64_t identity = object ? IdentityOf(*object) : 0;
        return identity ? identity : reinterpret_cast<std::uintptr_t>(object);
    }
    bool IsTracked() const { return place_.IsTracked(); }
    const Ref<CaseLife>& Life() const { return life_; }
    void* Address() const { return place_.Address(); }

 protected:
    HostObjectBase() = default;
    HostObjectBase(const HostPlace& place, Ref<CaseLife> life)
        : life_(std::move(life)), place_(place) {}

    // True when the object may be touched.
    bool Check() const { return !life_ || place_.Check(*life_); }

 private:
    Ref<CaseLife> life_;
    HostPlace place_;
};

template <class T>
class HostObject : public HostObjectBase {
 public:
    // None, which is never gone.
    HostObject() = default;
    // One that is there now.
    HostObject(T* object, const Ref<CaseLife>& life)
        : HostObjectBase(PlaceOf(object, life), life) {}
    // One that had this number when the host last told; it may be gone by now.
    HostObject(T* object, std::uint64_t identity, Ref<CaseLife> life)
        : HostObjectBase({object, identity}, std::move(life)) {}
    // One whose place is a T's.
    HostObject(const HostPlace& place, Ref<CaseLife> life)
        : HostObjectBase(place, std::move(life)) {}

    // Null for none and when it is gone.
    T* Get() const { return Check() ? static_cast<T*>(Address()) : nullptr; }

 private:
    static HostPlace PlaceOf(T* object, const Ref<CaseLife>& life) {
        const std::uint64_t identity = object ? IdentityOf(*object) : 0;
        return life ? HostPlace(object, identity, *life) : HostPlace(object, identity);
    }
};

}  // namespace fixtop
