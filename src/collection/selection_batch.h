// SPDX-License-Identifier: Apache-2.0
#pragma once

// SelectionBatch: while it is open, stores do not start the solver of the case; its end starts it
// once. Where stores start no solver anyway, or the top knows none, it does nothing.

#include "fixtop/entry.h"
#include "fixtop/ref.h"
#include "fixtop/solver.h"

namespace fixtop {

class SelectionBatch {
 public:
    // `top` may be null.
    explicit SelectionBatch(FIEntry* top);
    ~SelectionBatch();
    SelectionBatch(const SelectionBatch&) = delete;
    SelectionBatch& operator=(const SelectionBatch&) = delete;

    // Ends it and solves; afterwards its destruction does nothing.
    void Solve();

 private:
    bool IsOn(const char* name) const;
    void Switch(bool on) const;

    // Owns the solver.
    const Ref<FIEntry> top_;
    FISolver* solver_ = nullptr;
};

}  // namespace fixtop
