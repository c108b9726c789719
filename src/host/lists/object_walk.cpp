// SPDX-License-Identifier: Apache-2.0
#include "host/lists/object_walk.h"

#include <algorithm>

#include "host/host_access.h"

namespace fixtop {

bool ObjectFilter::Accept(const host::Viewable& object) const {
    const NamedTypes& types = TheAdapter().Types();
    switch (shown_) {
        case kStreams:
            return IsA(&object, types.stream);
        case kUnitOps:
            return IsA(&object, types.unit_op);
        case kNeither:
            return !IsA(&object, types.stream) && !IsA(&object, types.unit_op);
        default:
            return true;
    }
}

void ObjectWalk::Start() {
    if (!started_) First();
}

host::Viewable* ObjectWalk::Current() {
    Start();
    return parts_[at_].Current();
}

bool ObjectWalk::HasLost() {
    Start();
    return parts_[at_].HasLost();
}

host::Viewable* ObjectWalk::First() {
    started_ = true;
    for (at_ = 0; at_ + 1 < parts_.size(); ++at_) {
        if (host::Viewable* object = parts_[at_].First()) return object;
    }
    return parts_[at_].First();
}

host::Viewable* ObjectWalk::Last() {
    started_ = true;
    for (at_ = parts_.size() - 1; at_ > 0; --at_) {
        if (host::Viewable* object = parts_[at_].Last()) return object;
    }
    return parts_[at_].Last();
}

host::Viewable* ObjectWalk::Next() {
    if (!Current()) return nullptr;
    host::Viewable* object = parts_[at_].Next();
    while (!object && at_ + 1 < parts_.size()) object = parts_[++at_].First();
    return object;
}

host::Viewable* ObjectWalk::Prev() {
    if (!Current()) return nullptr;
    host::Viewable* object = parts_[at_].Prev();
    while (!object && at_ > 0) object = parts_[--at_].Last();
    return object;
}

bool ObjectWalk::AtBegin() {
    ObjectWalk first(*this);
    return Current() == first.First();
}

host::Viewable* ObjectWalk::SeekName(const char* name, bool from_here) {
    if (from_here) {
        Start();
    } else {
        at_ = 0;
    }
    started_ = true;
    host::Viewable* object = parts_[at_].SeekName(name, from_here);
    while (!object && at_ + 1 < parts_.size()) object = parts_[++at_].SeekName(name, false);
    return object;
}

host::Viewable* ObjectWalk::SeekPlace(std::size_t& place) {
    started_ = true;
    at_ = 0;
    host::Viewable* object = parts_[at_].SeekPlace(place);
    while (!object && at_ + 1 < parts_.size()) object = parts_[++at_].SeekPlace(place);
    return object;
}

bool ObjectWalk::IsOnSame(const ObjectWalk& other) const {
    return at_ == other.at_ && parts_[at_].IsOnSame(other.parts_[at_]);
}

int ObjectWalk::Compare(ObjectWalk& other) {
    const bool same_lists = std::equal(
        parts_.begin(), parts_.end(), other.parts_.begin(), other.parts_.end(),
        [](const ObjectPlace& one, const ObjectPlace& another) { return one.IsSameList(another); });
    if (!same_lists) return kNotComparable;
    Start();
    other.Start();
    if (at_ == other.at_) return parts_[at_].Compare(other.parts_[at_]);
    return at_ < other.at_ ? -1 : 1;
}

}  // namespace fixtop
