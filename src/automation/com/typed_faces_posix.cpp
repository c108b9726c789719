// SPDX-License-Identifier: Apache-2.0
#include "automation/com/typed_faces.h"

namespace fixtop {

class FaceList {};

TypedFaces::TypedFaces() = default;
TypedFaces::~TypedFaces() = default;

void* TypedFaces::Find(IUnknown&, FIIteratorBase&, const InterfaceId&) {
    return nullptr;
}

}  // namespace fixtop
