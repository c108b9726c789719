// SPDX-License-Identifier: Apache-2.0
#pragma once

// A position in the attributes of a class and of all its superclasses. The superclasses come first,
// in the order of their names and each with its own superclasses, then the attributes of the class
// in the order of the files.
//
// Forward, an inherited attribute and its redefinition are both shown; backward, the inherited one
// is passed over once. A missing superclass, or one that leads back to a class on the way to it, is
// logged on every walk that meets it and left out.
//
// The library must outlive the walker and must not change under it.

#include <memory>
#include <set>
#include <string>

namespace fixtop {

class CCDMAttribute;
class CCDMClass;

class CCDMAttributeWalker {
 public:
    // Stands before the first attribute.
    explicit CCDMAttributeWalker(const CCDMClass& walked) : CCDMAttributeWalker(walked, nullptr) {}
    CCDMAttributeWalker(const CCDMAttributeWalker& other) : CCDMAttributeWalker(other, nullptr) {}
    CCDMAttributeWalker& operator=(const CCDMAttributeWalker& other);

    // Each answers whether the walker stands on an attribute then; otherwise it stands before the
    // first or behind the last one, from where it can be moved back.
    bool First();
    bool Next();
    bool Last();
    bool Prev();

    // Null when it stands on none.
    CCDMAttribute* Current() const;

 private:
    CCDMAttributeWalker(const CCDMClass& walked, const CCDMAttributeWalker* below);
    CCDMAttributeWalker(const CCDMAttributeWalker& other, const CCDMAttributeWalker* below);

    bool EnterForward();
    bool EnterBackward();
    bool PassOverRedefined();
    std::unique_ptr<CCDMAttributeWalker> WalkSuperclass(const std::string& name) const;
    bool IsOnTheWay(const CCDMClass& candidate) const;

    const CCDMClass* class_;
    // The walker that this one is nested in.
    const CCDMAttributeWalker* below_;
    std::unique_ptr<CCDMAttributeWalker> nested_;
    std::set<std::string>::const_iterator superclass_;
    // Position in the class's own attributes; -1 while the nested walker is in charge, or, without
    // one, before the first attribute.
    int index_ = -1;
};

}  // namespace fixtop
