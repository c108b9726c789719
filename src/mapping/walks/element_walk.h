// SPDX-License-Identifier: Apache-2.0
#pragma once

// A walk over the elements of an array attribute. Each step moves the application's reference on
// which the walk was made; the walk's end brings it back to where it was found.

#include <memory>

#include "diagnostics/instance_counts.h"
#include "fixtop/reference.h"

namespace fixtop {

// The variable on an element that names its class, where that is not the attribute's.
inline constexpr char kSubclassVariable[] = "Subclass";

class CDTBase : private Counted<CountedClass::CDTBase> {
 public:
    CDTBase() = default;
    CDTBase(const CDTBase&) = delete;
    CDTBase& operator=(const CDTBase&) = delete;

    virtual ~CDTBase() = default;
    // The same walk at the same position, on another reference that stands at the same place as
    // this one's.
    virtual std::unique_ptr<CDTBase> Clone(FIReferenceBase& reference) const = 0;
    // Whether it stands on an element.
    virtual bool HasMore() const = 0;
    // Each answers whether it stands on an element then.
    virtual bool First() = 0;
    virtual bool Next() = 0;
    // Behind the last element; always false.
    virtual bool Last() = 0;
    virtual bool Prev() = 0;
    // Whether it names the class of each element, if only by none. Where it does not, the variable
    // is that of an element above.
    virtual bool NamesClasses() const { return false; }
    // What the application counted and what of it is walked, where it is counted at all.
    struct Count {
        int there = 0;
        int walked = 0;
    };
    virtual Count Counted() const { return {}; }
};

}  // namespace fixtop
