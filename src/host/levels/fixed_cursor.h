// SPDX-License-Identifier: Apache-2.0
#pragma once

// FixedCursor<Derived, Context>: a cursor over the fixed children of a level. Derived gives
//
//     static constexpr FixedNames kNames;
//
// and Context what NumberedCursor asks of it. Positions are clamped to 0 .. end.

#include <algorithm>
#include <cstring>
#include <span>

#include "host/lists/numbered_cursor.h"

namespace fixtop {

struct FixedNames {
    std::span<const char* const> names;
    // Where a seek from the end starts.
    int end_origin;
    // The position at which AtEnd is true. A walk that stops there does not see what follows.
    int at_end;
};

template <class Derived, class Context>
class FixedCursor : public NumberedCursor<Derived, Context> {
 public:
    using NumberedCursor<Derived, Context>::NumberedCursor;

    bool Seek(int origin, int delta) override {
        if (this->IsGone()) return false;
        GoTo(origin);
        const long long wanted = static_cast<long long>(position_) + delta;
        position_ = static_cast<int>(std::clamp<long long>(wanted, 0, End()));
        return position_ < End();
    }
    bool SeekName(int origin, const char* name) override {
        if (this->IsGone()) return false;
        GoTo(origin);
        for (int i = 0; name && i < End(); ++i) {
            if (std::strcmp(Names().names[i], name) != 0) continue;
            position_ = i;
            return true;
        }
        return false;
    }
    bool AtEnd() override { return this->IsGone() || position_ == Names().at_end; }

 protected:
    int End() const override { return static_cast<int>(Names().names.size()); }
    void ReadKey(int position, FIValue& out) const override {
        out.SetText(Names().names[position]);
    }

 private:
    using NumberedCursor<Derived, Context>::position_;

    static const FixedNames& Names() { return Derived::kNames; }
    void GoTo(int origin) {
        if (origin == kFromFirst) position_ = 0;
        if (origin == kFromEnd) position_ = Names().end_origin;
    }
};

}  // namespace fixtop
