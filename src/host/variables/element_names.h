// SPDX-License-Identifier: Apache-2.0
#pragma once

// Names of the elements of one dimension of an array, asked of the host one at a time.
//
// The description of the dimension tells how: a bare ":" means that elements are only counted, one
// without "[" that an enumeration names them, any other that a second array holds their names.

#include "fixtop/value.h"
#include "host/host_object.h"

namespace fixtop {

class HElementNames {
 public:
    // `object` has the array. `dimension` is the row's description of the dimension.
    HElementNames(const HostObject<host::Viewable>& object, const host::VarDescription& dimension);

    // NULL when an enumeration has no such entry, and when the object is gone.
    void Read(int index, FIValue& out) const;

    // Every element is named "Elem" and its index.
    bool AreCounted() const { return object_.Get() && source_ == Source::kCount; }

    // "Elem" and the index: the name of elements that have none of their own, and the name under
    // which each of them is found.
    static constexpr char kCounted[] = "Elem";
    static void SetCounted(int index, FIValue& out);

 private:
    enum class Source { kCount, kEnumeration, kArray };

    void ReadEnumeration(int index, FIValue& out) const;
    void ReadArray(int index, FIValue& out) const;

    HostObject<host::Viewable> object_;
    host::VarDescription dimension_;
    Source source_ = Source::kCount;
    bool is_enumeration_of_part_ = false;
};

}  // namespace fixtop
