// SPDX-License-Identifier: Apache-2.0
#pragma once

// FIReferenceBase: a durable handle on a node. It listens to the host, becomes stale when the case
// changes, finds the node again on the next use, and says so when the node is gone.
//
// Ownership: starts at one reference; Release at 0 destroys it, but not before a running round of
// callbacks has ended. A client may release it or unsubscribe from inside its own callback.
// Errors: a read of a node that is gone gives the text "Node deleted", forever; one that can't be
// found again just now "Node invalid".

#include "fixtop/entry.h"
#include "fixtop/value.h"

namespace fixtop {
class SavedStep;
}

namespace fixtop::inline FI {

class FIIteratorBase;

class FIReferenceBase {
 public:
    virtual ~FIReferenceBase() = default;
    virtual int AddRef() = 0;
    virtual int Release() = 0;

    // Passed to the iterator as they are.
    virtual FIIteratorBase* Copy() = 0;
    virtual int Depth() = 0;
    virtual void GetName(FIValue& out) = 0;
    virtual void NameText(char* buffer, int size) = 0;
    virtual int NameLength() = 0;
    virtual void GetPath(FIValue& out) = 0;
    virtual void PathText(char* buffer, int size) = 0;
    virtual int PathLength() = 0;
    virtual void KeyText(char* buffer, int size) = 0;
    virtual int KeyLength() = 0;
    virtual void DumpVars(FIValue& out) = 0;
    virtual FIVarSet* GetVarSet() = 0;

    // Guarded; `out` receives the failure's text.
    virtual void GetAttribute(const FIValue& name, FIValue& out) = 0;
    virtual void SetAttribute(const FIValue& name, const FIValue& value, int mode,
                              FIValue& out) = 0;
    virtual void SetValue(const FIValue& value, int mode, FIValue& out) = 0;
    virtual void SetValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                                FIValue& out) = 0;
    virtual void SetSpecValue(const FIValue& value, int mode, FIValue& out) = 0;
    virtual void SetSpecValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                                    FIValue& out) = 0;
    virtual void SetDisplayUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) = 0;
    virtual void SetDisplaySpecUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) = 0;
    virtual void SetUnit(const FIValue& unit, FIValue& out) = 0;
    virtual void SetSpecUnit(const FIValue& unit, FIValue& out) = 0;

    // Guarded; false or nothing on failure.
    virtual bool GetVarText(const char* name, FIValue& out) = 0;
    virtual bool GetVar(const FIValue& name, FIValue& out) = 0;
    virtual bool RemoveVar(const FIValue& name) = 0;
    virtual bool RemoveVarText(const char* name) = 0;
    virtual void SetVar(const FIValue& name, const FIValue& value) = 0;

    // Guarded; NULL on failure.
    virtual void DumpXml(FIValue& out, int levels) = 0;
    virtual void DumpXmlDefault(FIValue& out) = 0;
    virtual void DumpNode(FIValue& out) = 0;
    virtual void DumpNodeFlat(FIValue& out) = 0;
    virtual void DumpNodeDeep(FIValue& out) = 0;

    virtual int Compare(FIReferenceBase& other) = 0;
    virtual bool Less(FIReferenceBase& other) = 0;
    virtual bool Greater(FIReferenceBase& other) = 0;
    virtual bool Equal(FIReferenceBase& other) = 0;
    virtual bool NotEqual(FIReferenceBase& other) = 0;

    // Client subscriptions: kind 0 deletion, 1 value, 2 structure. The callback gets (owner, 1),
    // for structure (owner, 2). False when the node is gone or nothing on its path can tell.
    virtual bool Subscribe(void* owner, int kind, FICallback callback) = 0;
    virtual bool Unsubscribe(void* owner, int kind) = 0;
    // A collection element that holds this node. The caller owns it.
    virtual SavedStep* MakeElement() = 0;
    // Destroys now, or at the end of the running round of callbacks.
    virtual void SafeDelete() = 0;
    // The private iterator, lent.
    virtual FIIteratorBase* GetIterator() = 0;

    // A live reference becomes stale; false when it is deleted.
    virtual bool MarkStale() = 0;
    // A stale reference finds its node again; false when it is gone.
    virtual bool Rebind() = 0;

    // What its own subscriptions at the nodes call.
    virtual void OnAncestorChanged() = 0;
    virtual void OnValueChanged() = 0;
    virtual void OnStructureChanged() = 0;
    virtual void OnDeleted() = 0;
};

}  // namespace fixtop::inline FI
