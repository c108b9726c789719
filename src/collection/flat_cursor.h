// SPDX-License-Identifier: Apache-2.0
#pragma once

// FlatCursor: a position in a list of published nodes, counted from 0; past the last stands the
// count. Derived says how many there are, goes to a place and reads there; it begins on the first.

#include <algorithm>
#include <climits>
#include <cstring>

#include "fixtop/cursor.h"
#include "framework/nodes/counted.h"
#include "framework/nodes/shield.h"

namespace fixtop {

template <class Derived>
class FlatCursor : public CountedFromZero<FICursorBase> {
 public:
    const void* TypeId() const override { return &kTypeId; }
    FICursorBase* Clone(bool deep) override {
        if (!deep) return HandOut(static_cast<FICursorBase*>(this));
        auto* clone = new Shielded<Derived>(static_cast<const Derived&>(*this));
        return HandOut(static_cast<FICursorBase*>(clone));
    }
    bool Seek(int origin, int delta) override {
        const long long start = origin == kFromFirst ? 0 : origin == kFromEnd ? Count() : index_;
        return Stand(static_cast<int>(std::clamp<long long>(start + delta, 0, INT_MAX)));
    }
    // From the first, or with kFromPresent from the element behind the present one on and round to
    // it again, which itself is not asked. When none has the name the position stays.
    bool SeekName(int origin, const char* name) override {
        const int start = index_;
        const int count = Count();
        const bool goes_on = origin == kFromPresent && start < count;
        for (int i = 0; name && i < count - (goes_on ? 1 : 0); ++i) {
            if (Stand(goes_on ? (start + 1 + i) % count : i) && HasKey(name)) return true;
        }
        Stand(start);
        return false;
    }
    bool AtBegin() override { return index_ == 0; }
    bool AtEnd() override { return !stands_; }
    int Compare(FICursorPosition& other) override {
        if (&other == this) return 0;
        if (other.TypeId() != TypeId()) return kNotComparable;
        auto& that = static_cast<Derived&>(other);
        if (!static_cast<Derived&>(*this).IsSameList(that)) return kNotComparable;
        return (index_ > that.index_) - (index_ < that.index_);
    }

 protected:
    FlatCursor() = default;
    FlatCursor(const FlatCursor& other)
        : CountedFromZero<FICursorBase>(), index_(other.index_), stands_(other.stands_) {}

    virtual int Count() = 0;
    // Goes to a place, which `index_` is not yet; whether an element is there.
    virtual bool GoTo(int index) = 0;
    bool Stand(int index) {
        stands_ = GoTo(index);
        index_ = stands_ ? index : Count();
        return stands_;
    }

    int index_ = 0;
    bool stands_ = false;

 private:
    bool HasKey(const char* name) {
        FIValue key;
        GetKey(key);
        return key.IsText() && std::strcmp(key.CStr(), name) == 0;
    }

    static constexpr char kTypeId = 0;
};

}  // namespace fixtop
