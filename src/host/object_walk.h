#pragma once

// ObjectWalk: a place among host objects: those of a flowsheet that a filter accepts, and, for
// utilities, those of a second list that follow.

#include <vector>

#include "host/interface/viewable.h"
#include "host/list_position.h"

// Which objects of a list are shown.
class ObjectFilter {
 public:
    using Element = host::Viewable;
    enum Shown : int { kAll, kStreams, kUnitOps, kNeither };

    ObjectFilter() = default;
    explicit ObjectFilter(Shown shown);

    bool Accept(const host::Viewable& object) const;

    bool Shows(host::Viewable& object) const { return Accept(object); }
    static const char* Name(host::Viewable& object) { return object.GetName().CStr(); }
    int Id() const { return shown_; }

 private:
    Shown shown_ = kAll;
    const host::ObjectTypeInfo* stream_ = nullptr;
    const host::ObjectTypeInfo* unit_op_ = nullptr;
};

class ObjectWalk {
 public:
    using Element = host::Viewable;
    using Part = ListPosition<ObjectFilter>;

    // The parts one after the other, at least one.
    explicit ObjectWalk(std::vector<Part> parts) : parts_(std::move(parts)) {}

    static const char* Name(host::Viewable& object) { return ObjectFilter::Name(object); }

    host::Viewable* Current();
    host::Viewable* First();
    host::Viewable* Last();
    host::Viewable* Next();
    host::Viewable* Prev();
    bool AtBegin();
    host::Viewable* SeekName(const char* name, bool from_here);
    int Compare(ObjectWalk& other);

 private:
    // A new walk stands on its first object, which is looked for when it is wanted.
    void Start();

    std::vector<Part> parts_;
    std::size_t at_ = 0;
    bool started_ = false;
};
