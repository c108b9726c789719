// SPDX-License-Identifier: Apache-2.0
#pragma once

// CountedFromZero<Base>: the reference count of a class that starts at 0 and is deleted at 0.

#include "framework/nodes/small_object.h"

namespace fixtop {

template <class Base>
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
};

}  // namespace fixtop
