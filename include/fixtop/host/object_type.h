// SPDX-License-Identifier: Apache-2.0
#pragma once

// The host's record of one of its classes.

#include "fixtop/host/text.h"

namespace fixtop::host {

class ObjectTypeInfo {
 public:
    // True for the class itself and for its subclasses.
    virtual bool IsA(const ObjectTypeInfo* other) const = 0;
    // The word that clients see as `type`, such as "MaterialStreamObject".
    virtual const Text& DisplayName() const = 0;
    // The word under which FindObjectType knows the class; it may be the same.
    virtual const Text& ClassName() const = 0;

 protected:
    ~ObjectTypeInfo() = default;
};

}  // namespace fixtop::host
