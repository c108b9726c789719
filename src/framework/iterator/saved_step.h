// SPDX-License-Identifier: Apache-2.0
#pragma once

// SavedStep: one step of a saved path. It holds a node and knows how to find it again
// after the host's lists were rebuilt: by the number of its object when the node has one of its
// own, else by the key under which it lies below its parent step and what tells it from others of
// that key. All of it is taken when the step is saved: nothing is asked of the node afterwards.
//
// Ownership: the maker owns the element; the parent is lent and must outlive it.

#include "diagnostics/instance_counts.h"
#include "fixtop/cursor.h"
#include "fixtop/entry.h"
#include "fixtop/ref.h"
#include "fixtop/value.h"
#include "framework/nodes/liveness.h"

namespace fixtop {

class SavedStep : private Counted<CountedClass::FICollectionElement> {
 public:
    // A saved root: `parent` is null and `cursor` too. Otherwise the key is the one of `cursor`, or
    // the node's name when the cursor has none.
    SavedStep(FIEntry* entry, SavedStep* parent, FICursorBase* cursor);
    SavedStep(const SavedStep& other, SavedStep* parent);
    SavedStep(const SavedStep&) = delete;
    SavedStep& operator=(const SavedStep&) = delete;

    FIEntry* GetEntry() const { return entry_.Counted(); }
    SavedStep* Parent() const { return parent_; }
    // A text, or an INT for a child that is known by its index alone; NULL for a root.
    const FIValue& Key() const { return key_; }

    // Finds the node again below `parent`. `cursor` is the one that stood on it, and stays where
    // the node's own object tells that it is still there; otherwise it is a new one. False, and
    // both results empty, when the node is gone.
    bool Resolve(FIEntry& parent, Ref<FICursorBase>& cursor, Ref<FIEntry>& entry) const;

 private:
    bool FindByKey(FIEntry& parent, Ref<FICursorBase>& cursor, Ref<FIEntry>& entry) const;
    // The entry on which the cursor stands, or the one of its further siblings of this key that is
    // the saved node; the cursor is one on that then.
    Ref<FIEntry> FindSame(Ref<FICursorBase>& cursor) const;
    // Among all siblings, whatever their names.
    Ref<FIEntry> FindNumber(FICursorBase& cursor) const;
    bool HasNumber(FIEntry& entry) const;
    bool IsSame(FIEntry& entry) const;

    Ref<FIEntry> entry_;
    SavedStep* parent_;
    FIValue key_;
    FIValue name_;
    // Of the entry; null for one that stands on nothing that may go.
    const LivingNode* living_ = nullptr;
    std::uint64_t number_ = 0;
    LivingNode::Mark mark_;
};

}  // namespace fixtop
