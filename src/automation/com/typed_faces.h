// SPDX-License-Identifier: Apache-2.0
#pragma once

// TypedFaces: what a node object is as an object of its class. A node whose attribute "type" is
// "Object(<class>)" answers to the interface of that class and to those of its bases, as they stand
// in the type library of GetCCDMLibrary, and to the system's dispatch interface as the first of
// them. Classes whose names do not begin with "QSI" have no such face. Part of the node, which
// counts for it.

#include <memory>

#include "fixtop/automation/unknown.h"
#include "fixtop/iterator.h"

namespace fixtop {

class FaceList;

class TypedFaces {
 public:
    TypedFaces();
    ~TypedFaces();
    TypedFaces(const TypedFaces&) = delete;
    TypedFaces& operator=(const TypedFaces&) = delete;

    // Not counted; null when the node, which stands at `place`, is nothing of the kind, and where
    // the system has no type libraries.
    void* Find(IUnknown& node, FIIteratorBase& place, const InterfaceId& id);

 private:
    // Null until a face is asked for.
    std::unique_ptr<FaceList> faces_;
};

}  // namespace fixtop
