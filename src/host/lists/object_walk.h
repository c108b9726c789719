// SPDX-License-Identifier: Apache-2.0
#pragma once

// ObjectPlace: a place among the host objects of a list that a filter accepts. ObjectWalk: the same
// where those of a second list follow, as for utilities.

#include <array>
#include <cstddef>

#include "fixtop/host/viewable.h"
#include "host/adapter.h"
#include "host/lists/list_position.h"

namespace fixtop {

// Which objects of a list are shown.
class ObjectFilter {
 public:
    using Element = host::Viewable;
    enum Shown : int { kAll, kStreams, kUnitOps, kNeither };

    ObjectFilter() = default;
    explicit ObjectFilter(Shown shown) : shown_(shown) {}

    bool Accept(const host::Viewable& object) const;

    bool Shows(host::Viewable& object) const { return Accept(object); }
    static const char* Name(host::Viewable& object) { return object.GetName().CStr(); }
    int Id() const { return shown_; }
    static std::uint64_t Number(const host::Viewable& object) { return IdentityOf(object); }

 private:
    Shown shown_ = kAll;
};

class ObjectPlace : public ListPosition<ObjectFilter> {
 public:
    ObjectPlace(const host::LinkedList* list, ObjectFilter::Shown shown)
        : ListPosition(list, ObjectFilter(shown)) {}
    using ListPosition::ListPosition;

    static const char* Name(host::Viewable& object) { return ObjectFilter::Name(object); }
};

class ObjectWalk {
 public:
    using Element = host::Viewable;

    // One part after the other.
    ObjectWalk(const ObjectPlace& first, const ObjectPlace& second) : parts_{first, second} {}

    static const char* Name(host::Viewable& object) { return ObjectFilter::Name(object); }

    host::Viewable* Current();
    // The object on which it stood does not live any more.
    bool HasLost();
    host::Viewable* First();
    host::Viewable* Last();
    host::Viewable* Next();
    host::Viewable* Prev();
    bool AtBegin();
    host::Viewable* SeekName(const char* name, bool from_here);
    // As that of a part, through all of them.
    host::Viewable* SeekPlace(std::size_t& place);
    int Compare(ObjectWalk& other);
    bool IsOnSame(const ObjectWalk& other) const;

 private:
    // A new walk stands on its first object, which is looked for when it is wanted.
    void Start();

    std::array<ObjectPlace, 2> parts_;
    std::size_t at_ = 0;
    bool started_ = false;
};

}  // namespace fixtop
