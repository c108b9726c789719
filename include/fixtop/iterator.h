// SPDX-License-Identifier: Apache-2.0
#pragma once

// FIIteratorBase: the client's handle on the tree: a present entry and the frames that lead to it
// from the root. All navigation, reads and writes, path walking and dumps go through it.
//
// Ownership: starts at one reference, which belongs to whoever asked for it; Release deletes at 0.
// Errors: navigation answers false and leaves the position where its operation says; reads give
// NULL; writes put NULL or the message into `out`.
// Past the last sibling Next answers false, and the iterator stands where the family of the
// siblings goes then: on the shared empty entry, whose reads give NULL, or, among a host's objects,
// variables and specification elements, back on the first of them. A walk ends by the answer.
// Threads: an iterator belongs to one thread, the one that runs the simulation.

#include "fixtop/entry.h"
#include "fixtop/value.h"

namespace fixtop {
struct PathClause;
class PathStep;
}  // namespace fixtop

namespace fixtop::inline FI {

class FIReferenceBase;

class FIIteratorBase {
 public:
    virtual ~FIIteratorBase() = default;

    // A new iterator at the same position, with the variables and units of this one. One reference.
    virtual FIIteratorBase* Copy() = 0;
    // A durable handle on a copy of this iterator. One reference.
    virtual FIReferenceBase* MakeReference() = 0;

    // False if the present node repeats an ancestor, else whether it may have children.
    virtual bool CanDescend() = 0;
    // To the child at `index`, counted from 0.
    virtual bool Down(int index) = 0;
    // Parses a path and walks it; one that does not parse or leads nowhere answers false, with the
    // iterator back where it was. The text in parentheses behind a name is the key of a node, as
    // GetPath writes it, or an attribute that the node has, with which a path ends. One such may
    // stand behind a key in parentheses of its own. A path in which it is neither leads nowhere.
    virtual bool SeekPath(const FIValue& path) = 0;
    // Walks a parsed path; `attribute` gets the name in parentheses of its last step, or NULL.
    virtual bool Walk(const PathStep& step, FIValue& attribute) = 0;
    virtual bool WalkFrom(const PathStep& step) = 0;
    virtual bool DownFirst() = 0;
    virtual bool Next() = 0;
    virtual bool First() = 0;
    virtual bool Prev() = 0;
    virtual bool Last() = 0;
    virtual bool DownLast() = 0;
    // To the parent; false at the root.
    virtual bool Up() = 0;
    // One step of a parsed path.
    virtual bool Step(const PathStep& step) = 0;
    // On to the next sibling that satisfies the step.
    virtual bool NextMatch(const PathStep& step) = 0;
    // Count of frames; 0 at the root.
    virtual int Depth() = 0;

    virtual void GetName(FIValue& out) = 0;
    // Text into a buffer of `size` bytes, always terminated; length in bytes without the NUL.
    virtual void NameText(char* buffer, int size) = 0;
    virtual int NameLength() = 0;
    // The whole path from the root, whose name it begins with; without that name and the dot behind
    // it, SeekPath on an iterator at the root reads it back; but for nodes that are called "*" or
    // "#" with a number, which the language takes for any child and for a place in the list.
    virtual void GetPath(FIValue& out) = 0;
    virtual void PathText(char* buffer, int size) = 0;
    virtual int PathLength() = 0;
    // Texts of the key attributes of the present node, joined with ", ".
    virtual void KeyText(char* buffer, int size) = 0;
    virtual int KeyLength() = 0;
    // A table of all variables in force.
    virtual void DumpVars(FIValue& out) = 0;

    virtual void GetAttribute(const FIValue& name, FIValue& out) = 0;
    virtual void SetAttribute(const FIValue& name, const FIValue& value, int mode,
                              FIValue& out) = 0;
    virtual const void* TypeId() const = 0;
    // Counted; a cursor of it reads with this iterator's variables after SetVarSet(GetVarSet()),
    // for as long as this iterator lives.
    virtual FIAttributeSource* GetAttributeSource() = 0;

    // Variables live at the present position: nodes below see them, Up takes them away.
    virtual void SetVarText(const char* name, const char* value) = 0;
    virtual void SetVarText(const char* name, const FIValue& value) = 0;
    virtual void SetVar(const FIValue& name, const FIValue& value) = 0;
    virtual bool GetVarText(const char* name, FIValue& out) = 0;
    virtual bool GetVar(const FIValue& name, FIValue& out) = 0;
    virtual bool RemoveVarText(const char* name) = 0;
    virtual bool RemoveVar(const FIValue& name) = 0;

    // Whether the present node is the first of its siblings; whether the iterator stands behind the
    // last of them, where a family that goes back to the first never does. True without frames.
    virtual bool AtFirst() = 0;
    virtual bool AtLast() = 0;
    // From the root down: -1, 0, 1, or -2 when not comparable.
    virtual int Compare(FIIteratorBase& other) = 0;
    virtual bool Less(FIIteratorBase& other) = 0;
    virtual bool Greater(FIIteratorBase& other) = 0;
    virtual bool Equal(FIIteratorBase& other) = 0;
    virtual bool NotEqual(FIIteratorBase& other) = 0;

    // XML text of the node and what is below it, down to `levels` levels; the default goes one
    // level down.
    virtual void DumpXml(FIValue& out, int levels) = 0;
    virtual void DumpXmlDefault(FIValue& out) = 0;

    virtual void SetDisplayUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) = 0;
    virtual void SetDisplaySpecUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) = 0;
    virtual void SetUnit(const FIValue& unit, FIValue& out) = 0;
    virtual void SetSpecUnit(const FIValue& unit, FIValue& out) = 0;
    virtual void SetValue(const FIValue& value, int mode, FIValue& out) = 0;
    virtual void SetValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                                FIValue& out) = 0;
    virtual void SetSpecValue(const FIValue& value, int mode, FIValue& out) = 0;
    virtual void SetSpecValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                                    FIValue& out) = 0;

    // A new iterator at the node to which the present one leads by an attribute, or null. One
    // reference. The context gives the way for the name: a whole path, or, where the name is a path
    // in the host's notation, step by step what is named by it.
    virtual FIIteratorBase* OpenAttribute(const FIValue& name) = 0;
    // Whether the key attribute of this name is hidden.
    virtual bool IsKeyName(const char* name) = 0;
    // Like SeekPath, each step compared by key from the root of the chain.
    virtual bool Locate(const FIValue& path) = 0;
    virtual bool LocateChain(const PathStep& step) = 0;

    // XML text of the attributes alone, of the node alone, of the node and its children, of the
    // node and everything below it.
    virtual void DumpAttributes(FIValue& out) = 0;
    virtual void DumpNodeFlat(FIValue& out) = 0;
    virtual void DumpNode(FIValue& out) = 0;
    virtual void DumpNodeDeep(FIValue& out) = 0;

    virtual int AddRef() = 0;
    virtual int Release() = 0;
    // The variables and units that entries are shown; lives as long as the iterator.
    virtual FIVarSet* GetVarSet() = 0;

    // Passed to the present entry as they are.
    virtual int GetCaps(int a, int b) = 0;
    virtual void DoAction(FIValue& out, int a, int b) = 0;
    virtual void DoActionEx(FIValue& out, int a, int b, int c, int d) = 0;
    virtual void DoCommand(int command, FIErrorRecord& error) = 0;

    // To a child by name: SeekChildFrom goes on from the present sibling, SeekChild goes down.
    virtual bool SeekChildFrom(const char* name) = 0;
    virtual bool SeekChild(const char* name) = 0;
    // The parts of a walk: whether a clause holds at the present node, the walk of a chain, which
    // ends back at the start when it fails, and whether the filters of a step hold.
    virtual bool EvalClause(const PathClause& clause) = 0;
    virtual bool WalkSteps(const PathStep& step) = 0;
    virtual bool Filter(const PathStep& step) = 0;

    // Saves the position as keys before the host's lists are rebuilt, and finds it again
    // afterwards; Thaw answers false when a node of the path is gone.
    virtual void Freeze() = 0;
    virtual bool Thaw() = 0;
};

}  // namespace fixtop::inline FI
