#pragma once

#include "host/interface/viewable.h"

// HAttachment: a node whose variable, or element of an array, may point at another object.
class HAttachment {
 public:
    // The object that it points at, null when there is none.
    virtual host::Viewable* Holder() const = 0;

 protected:
    ~HAttachment() = default;
};
