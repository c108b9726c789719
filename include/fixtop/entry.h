// SPDX-License-Identifier: Apache-2.0
#pragma once

// FIEntry, FIContext, FIAttributeSource: a node of the tree, the maker of its child cursors and the
// maker of its attribute cursors.
//
// An entry is a short-lived view made on demand. It knows its name, its attributes and how to list
// its children; its place in the tree is held by a cursor and an iterator.
//
// Ownership: reference counts are plain integers. A pointer that an operation returns carries one
// reference for the receiver. An entry starts at 0 and is first counted by its caller; Release
// deletes at 0. Nothing owns upward.
// Errors: a NULL value for what does not exist, a message text in an out value for what is refused.
// Nothing throws: an operation without memory is given up, here and in all that clients hold, as
// FixtopMemoryFailures (fixtop/fixtop.h) tells.
// Threads: all calls come on the thread that runs the simulation.

#include "fixtop/value.h"

namespace fixtop::inline FI {

class FIVarSet;
class FICursorBase;
class FIAttributeCursorBase;

// What a subscriber is told: its own owner pointer and the kind that it subscribed to.
using FICallback = void (*)(void* owner, int kind);

enum FISubscriptionKind : int { kNodeDeleted = 0, kValueChanged = 1, kStructureChanged = 2 };

// Kinds of cursor that a context makes.
enum FICursorKind : int { kKeyCursor = 1, kChildCursor = 2 };

// What DoCommand answers.
struct FIErrorRecord {
    int code = -2;
    int first = -1;
    int second = -1;
    FIValue text;
};

// The family of a node: one context serves all entries of that family under one parent.
class FIContext {
 public:
    virtual ~FIContext() = default;
    virtual int AddRef() = 0;
    virtual int Release() = 0;
    // A counted child cursor, kChildCursor for the children, kKeyCursor for the nodes that identify
    // this node among its siblings. Never null: an empty list is the shared empty cursor.
    virtual FICursorBase* MakeCursor(int kind) = 0;
    // Turns the beginning of a path in the host's own notation into the key of a child, and sets
    // `*rest` to what follows. NULL and the whole path when the beginning names no child.
    virtual void GetKeyValue(const char* path, FIValue& out, const char** rest);
};

class FIAttributeSource {
 public:
    virtual ~FIAttributeSource() = default;
    virtual int AddRef() = 0;
    virtual int Release() = 0;
    // A counted cursor over the attributes, standing on the first row.
    virtual FIAttributeCursorBase* MakeCursor() = 0;
};

class FIEntry {
 public:
    virtual ~FIEntry() = default;
    // Both answer the new count.
    virtual int AddRef() = 0;
    virtual int Release() = 0;

    virtual void GetName(FIValue& out) = 0;
    // An unknown name gives NULL.
    virtual void GetAttribute(const FIValue& name, FIValue& out) = 0;
    // `out` is NULL on success, else the message. `mode` is the manner of storing; 0 but for
    // specification entries.
    virtual void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out);
    virtual FIAttributeSource* GetAttributeSource() = 0;
    // May have children.
    virtual bool IsContainer();
    virtual FIContext* GetContext() = 0;
    // Asks to be told of changes; false when the node can't tell.
    virtual bool Subscribe(void* owner, int kind, FICallback callback);
    virtual bool Unsubscribe(void* owner, int kind);
    // By name, as FIValue::Compare. One whose object is gone equals those that stood on the same,
    // and is not comparable with any other.
    virtual int Compare(FIEntry& other);

    virtual void SetUnit(const FIValue& unit, FIValue& out);
    virtual void SetSpecUnit(const FIValue& unit, FIValue& out);
    virtual void SetValue(const FIValue& value, int mode, FIValue& out);
    virtual void SetValueInUnit(const FIValue& value, const FIValue& unit, int mode, FIValue& out);
    virtual void SetSpecValue(const FIValue& value, int mode, FIValue& out);
    virtual void SetSpecValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                                    FIValue& out);
    // Tells the caller's FIVarSet the unit to show a quantity in; NULL is the node's own quantity.
    virtual void SetDisplayUnit(const FIValue& unit, const FIValue& quantity, FIValue& out);
    virtual void SetDisplaySpecUnit(const FIValue& unit, const FIValue& quantity, FIValue& out);

    // The variables and units of whoever is calling; lent for the call, not counted. The same for
    // every entry, so that a read pays for no call.
    virtual void SetVarSet(FIVarSet* vars) final { var_set_ = vars; }
    virtual FIVarSet* GetVarSet() final { return var_set_; }

    // Lends the service of a kind; false and null when the node has none. No loan has to be ended,
    // so ReleaseService answers false and null.
    virtual bool QueryService(int kind, void** out);
    virtual bool ReleaseService(void** out);

    // Takes the host's hold on this node before a write; true if it took it.
    virtual bool CanHold();
    // Gives that hold back after the write.
    virtual void BeginBatch();
    // Does nothing; kept for its place in the table.
    virtual void EndBatch(int argument);

    // What a client may do with the node beyond reads and writes. A node that knows no such thing
    // answers 0, and the message in `out` or in the record.
    virtual int GetCaps(int a, int b);
    virtual void DoAction(FIValue& out, int a, int b);
    virtual void DoActionEx(FIValue& out, int a, int b, int c, int d);
    virtual void DoCommand(int command, FIErrorRecord& error);

 protected:
    FIVarSet* var_set_ = nullptr;
};

}  // namespace fixtop::inline FI
