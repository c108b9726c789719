// SPDX-License-Identifier: Apache-2.0
#pragma once

// IndexCursor<Derived, Context>: the cursor of the two levels of an array set. Seeks from the first
// start at 0, all others at the present position; running off either side stops there and answers
// false. Context also gives `int Count() const`.

#include "host/lists/numbered_cursor.h"

namespace fixtop {

template <class Derived, class Context>
class IndexCursor : public NumberedCursor<Derived, Context> {
 public:
    using NumberedCursor<Derived, Context>::NumberedCursor;

    bool Seek(int origin, int delta) override {
        const long long start = origin == kFromFirst ? 0 : position_;
        return StandAt(start + delta);
    }

 protected:
    int End() const override { return this->List().Count(); }
    bool StandAt(long long wanted) {
        if (this->IsGone()) return false;
        const bool inside = wanted >= 0 && wanted < End();
        position_ = inside ? static_cast<int>(wanted) : wanted < 0 ? 0 : End();
        return inside;
    }

    using NumberedCursor<Derived, Context>::position_;
};

}  // namespace fixtop
