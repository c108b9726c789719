#pragma once

// FICollectionElement: one step of a saved path. It holds a node and knows the key under which the
// node lies below its parent step, to find it again after the host's lists were rebuilt.
//
// Ownership: the maker owns the element; the parent is lent and must outlive it.

#include "diagnostics/instance_counts.h"
#include "framework/cursor.h"
#include "framework/entry.h"
#include "framework/ref.h"
#include "value/fi_value.h"

class FICollectionElement : private Counted<CountedClass::FICollectionElement> {
 public:
    // A saved root: `parent` is null and `cursor` too. Otherwise the key is the one of `cursor`, or
    // the node's name when the cursor has none. Only the key and the name are asked for, which are
    // readable after the host has deleted the object.
    FICollectionElement(FIEntry* entry, FICollectionElement* parent, FICursorBase* cursor);
    FICollectionElement(const FICollectionElement& other, FICollectionElement* parent);
    FICollectionElement(const FICollectionElement&) = delete;
    FICollectionElement& operator=(const FICollectionElement&) = delete;

    FIEntry* GetEntry() const { return entry_.Counted(); }
    FICollectionElement* Parent() const { return parent_; }
    // A text, or an INT for a child that is known by its index alone; NULL for a root.
    const FIValue& Key() const { return key_; }

    // Finds the node again below `parent`, on a new cursor. False, and both results empty, when no
    // child has the key.
    bool Resolve(FIEntry& parent, Ref<FICursorBase>& cursor, Ref<FIEntry>& entry) const;

 private:
    // The entry on which the cursor stands, or the one of its further siblings of this key that is
    // the saved node; the cursor goes there.
    Ref<FIEntry> FindSame(FICursorBase& cursor) const;

    Ref<FIEntry> entry_;
    FICollectionElement* parent_;
    FIValue key_;
};
