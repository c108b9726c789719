// SPDX-License-Identifier: Apache-2.0
#pragma once

// CountedFromZero<Base>: the reference count of a class that starts at 0 and is deleted at 0. Four
// bytes of room are left behind the count: a class may keep its Beside there.

#include "framework/nodes/small_object.h"

namespace fixtop {

struct NothingBeside {};

template <class Base, class Beside = NothingBeside>
class CountedFromZero : public Base, public SmallObject {
 public:
    using Base::Base;
    int AddRef() final { return ++references_; }
    int Release() final {
        const int left = --references_;
        if (left <= 0) delete this;
        return left;
    }

 protected:
    int references_ = 0;
    [[no_unique_address]] Beside beside_;
};

}  // namespace fixtop
