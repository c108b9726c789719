// SPDX-License-Identifier: Apache-2.0
#pragma once

// Moving the node that a reference stands on.

#include "framework/reference/reference.h"

namespace fixtop {

// Goes up to a depth; stays when it is there or above.
inline void PopTo(FIIteratorBase& it, int depth) {
    while (it.Depth() > depth && it.Up()) {
    }
}

// Runs `move` on the reference's iterator, also where it only looks: false when the node is gone.
// The framework has one kind of reference.
template <class Mover>
bool MoveReference(FIReferenceBase& reference, Mover move) {
    return static_cast<FIReference&>(reference).Move(move);
}

inline void PopTo(FIReferenceBase& reference, int depth) {
    if (reference.Depth() <= depth) return;
    MoveReference(reference, [depth](FIIteratorBase& it) {
        PopTo(it, depth);
        return true;
    });
}

}  // namespace fixtop
