// SPDX-License-Identifier: Apache-2.0
#pragma once

// The single child of a root: TopCursorBase stands on it or past it, TopContext makes the cursors.
// The child is named "Top", has no attributes, is a container and shows the inner context.

#include "fixtop/cursor.h"
#include "fixtop/entry.h"
#include "fixtop/ref.h"
#include "framework/nodes/counted.h"

namespace fixtop {

class TopCursorBase : public FICursorBase {
 public:
    // Shares `inner`; a new cursor stands on the child and has count 1.
    explicit TopCursorBase(FIContext* inner);

    const void* TypeId() const override;
    int AddRef() override { return ++references_; }
    int Release() override;
    FICursorBase* Clone(bool deep) override;
    // From the first or present: forward goes past the child, back returns to it. From the end the
    // same. A delta of 0 and an unknown origin stay.
    bool Seek(int origin, int delta) override;
    // Any name but "Top" goes past the child.
    bool SeekName(int origin, const char* name) override;
    bool AtBegin() override { return !at_end_; }
    bool AtEnd() override { return at_end_; }
    int Compare(FICursorPosition& other) override;
    void GetKey(FIValue& out) override;
    FIEntry* GetEntry() override;

 private:
    Ref<FIContext> inner_;
    bool at_end_ = false;
    int references_ = 1;
};

class TopContext : public CountedFromZero<FIContext> {
 public:
    explicit TopContext(FIContext* inner);
    // Kind kKeyCursor has nothing to list.
    FICursorBase* MakeCursor(int kind) override;

 private:
    Ref<FIContext> inner_;
};

}  // namespace fixtop
