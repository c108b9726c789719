// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/case_life.h"

namespace fixtop {

// HAttachment: a node whose variable, or element of an array, may point at another object.
class HAttachment {
 public:
    // The object that it points at, null when there is none.
    virtual host::Viewable* Holder() const = 0;

 protected:
    ~HAttachment() = default;
};

// HAttachedList: the variable list of the object that an attachment points at, asked for when it is
// first wanted, and again when the structure of a case has changed since: the object may be gone.
class HAttachedList {
 public:
    // Null when nothing is attached or it has no variables.
    const host::LinkedList* Of(const HAttachment& attachment, const Liveness& life) {
        if (list_ && life.IsCurrent(revision_)) return list_;
        host::Viewable* holder = attachment.Holder();
        list_ = holder ? holder->VariableNames() : nullptr;
        revision_ = life.Revision();
        return list_;
    }

 private:
    const host::LinkedList* list_ = nullptr;
    std::uint64_t revision_ = 0;
};

}  // namespace fixtop
