// SPDX-License-Identifier: Apache-2.0
#pragma once

// Cursors: positions in a list. FICursorBase stands in the children of a node,
// FIAttributeCursorBase in its attributes; FICursorPosition has the twelve operations of both.
//
// A cursor stays valid while the list it walks is stable. Seeks report failure by false and leave
// the cursor at the end or where its family says. Cursors may be shared: whoever is about to move
// one that others hold moves a copy.

#include "fixtop/ref.h"
#include "fixtop/value.h"

namespace fixtop::inline FI {

class FIEntry;
class FIVarSet;

// Where a seek starts.
enum FIOrigin : int { kFromFirst = 0, kFromPresent = 1, kFromEnd = 2 };

// Answer of Compare for positions of different lists.
inline constexpr int kNotComparable = -2;

class FICursorPosition {
 public:
    virtual ~FICursorPosition() = default;
    // Identifies the concrete class; cursors of different classes never compare.
    virtual const void* TypeId() const = 0;
    // Both answer the new count; Release deletes at 0.
    virtual int AddRef() = 0;
    virtual int Release() = 0;
    // false: this cursor with one more reference; true: a new one at the same position, count 1.
    virtual FICursorPosition* Clone(bool deep) = 0;
    // Moves `delta` elements from the origin; true if it stands on an element.
    virtual bool Seek(int origin, int delta) = 0;
    virtual bool SeekName(int origin, const char* name) = 0;
    // By the given entry's name.
    virtual bool SeekValue(int origin, FIEntry& entry) = 0;
    virtual bool AtBegin() = 0;
    // Past the last element.
    virtual bool AtEnd() = 0;
    // -1, 0, 1, or -2 when not comparable.
    virtual int Compare(FICursorPosition& other) = 0;
    // Key of the present element, NULL at the end.
    virtual void GetKey(FIValue& out) = 0;
};

class FICursorBase : public FICursorPosition {
 public:
    FICursorBase* Clone(bool deep) override = 0;
    bool SeekValue(int origin, FIEntry& entry) override;
    // The counted entry at the present element, null (or the shared empty entry, as the family
    // says) at the end.
    virtual FIEntry* GetEntry() = 0;
    virtual bool IsHidden();
};

class FIAttributeCursorBase : public FICursorPosition {
 public:
    FIAttributeCursorBase* Clone(bool deep) override = 0;
    // The attribute's value, NULL at the end.
    virtual void GetValue(FIValue& out) = 0;
    // The variables with which the owner reads. A set that was given here is lent: it is taken back
    // when it goes, and when the cursor and its copies go; then the owner reads without.
    virtual FIVarSet* GetVarSet() = 0;
    virtual void SetVarSet(FIVarSet* vars) = 0;
};

}  // namespace fixtop::inline FI
