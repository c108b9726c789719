// SPDX-License-Identifier: Apache-2.0
#pragma once

// FICollectionBase: a selection of nodes, and FICollectionIteratorBase, a walk over its items. The
// selection is kept as a tree of path steps that items share, and as an ordered list of those steps
// that are items. It outlives changes of the case: an item whose node can't be found keeps its
// path, its place and its units.
//
// FICollectionElement: a step. It is lent: it lives until it is removed, or its collection cleared,
// loaded anew or gone; an item whose node is gone also ends when another node that is an item, or
// becomes one, has its path by then. What has ended must not be asked for.
//
// Ownership: as for entries; a collection starts at one reference, which belongs to whoever made
// it. An iterator keeps its collection.
// Errors: a read where there is no node gives the text "No element under this node", a store
// "No element exists under this node"; a node that is gone reads as a reference to it does.
// Threads: those of the nodes.

#include "fixtop/entry.h"
#include "fixtop/value.h"

namespace fixtop {
class FICollectionElement;
}

namespace fixtop::inline FI {

class FICollectionIteratorBase;
class FIIteratorBase;
class FIReferenceBase;

// What a subscriber is told: its two words, the item that changed and the kind of change, as
// FISubscriptionKind.
using FICollectionCallback = void (*)(void* owner, void* tag, FICollectionElement* item, int kind);

class FICollectionBase {
 public:
    virtual ~FICollectionBase() = default;
    virtual int AddRef() = 0;
    virtual int Release() = 0;
    virtual const void* TypeId() const = 0;
    // Stands before the first item. One reference.
    virtual FICollectionIteratorBase* MakeIterator() = 0;

    // While a collection watches, its subscribers are told of each change of an item, and an item
    // without a node looks for it when it is read. Both may be called at any time, also from
    // within a subscriber's call.
    virtual void StartWatching() = 0;
    virtual void StopWatching() = 0;

    virtual int Count() = 0;
    // An attribute of each item, in item order: `values` has room for Count() values. Each in the
    // unit of its item.
    virtual void GetValues(const FIValue& attribute, FIValue* values) = 0;
    // Stores into the first `count` items, at most all; NULL leaves an item as it is. A unit that
    // is not NULL is that of the values, else each item's own. `outs` gets NULL or the message for
    // each, and may be null. All is stored in one batch: the host solves once.
    virtual void SetValues(const FIValue& attribute, const FIValue* values, int count,
                           const FIValue& unit, FIValue* outs) = 0;

    // The text of the backup form. Items whose nodes were renamed are written, and called from then
    // on, as these are called now; of two that come to have one path the one that is gone goes.
    virtual void ToXml(FIValue& out) = 0;
    // Reads the text of the backup form in place of what the collection holds, and looks for the
    // nodes from the top that it has, if it has one. False, and the collection is empty, when the
    // text is none.
    virtual bool FromXml(const char* text) = 0;

    // `callback` is called with both words, which tell subscribers apart. False when the collection
    // is empty, or nothing was removed.
    virtual bool Subscribe(void* owner, void* tag, FICollectionCallback callback) = 0;
    virtual bool Unsubscribe(void* owner, void* tag) = 0;

    // The place among the items from 0; -1 for one that is none of this collection's.
    virtual int IndexOf(const FICollectionElement* item) = 0;
    virtual void Clear() = 0;
    // False when there is no such item. A step that other items need stays as a step.
    virtual bool Remove(FICollectionElement* item) = 0;
    virtual bool RemoveAt(int index) = 0;
    virtual bool Contains(const FICollectionElement* item) = 0;

    // The node on which the iterator stands becomes the last item; one that is an item already
    // stays where it is. The top of the first node added is the one from which all are sought.
    // Null when there is no node. Units in which the iterator shows the node become the item's.
    virtual FICollectionElement* Add(FIIteratorBase& node) = 0;
    // All nodes to which a path leads from there, in their order; how many were added, -1 when the
    // text is no path.
    virtual int AddMatches(FIIteratorBase& from, const FIValue& path) = 0;
    // FromXml, with the top of the iterator as the place from which nodes are sought. A text of the
    // form of selections is read as well: its nodes are found by their whole paths, and one that is
    // not found is left out.
    virtual bool Load(const char* text, FIIteratorBase& from) = 0;
    // In item order; null past the last.
    virtual FICollectionElement* ItemAt(int index) = 0;
    // The id of the step above all others, which is the name of the top that the nodes were chosen
    // below; NULL while there are no steps.
    virtual void GetRootId(FIValue& out) = 0;
    // Several attributes of each item in one pass, item by item: `values` has room for Count()
    // times `count` values. Each as GetValues has it.
    virtual void GetRows(const FIValue* attributes, int count, FIValue* values) = 0;
    // Items whose nodes were renamed are called as these are called now, as ToXml has it.
    virtual void FollowNames() {}
    // Add, but what becomes an item comes before this one; the last for one that is none of this
    // collection's.
    virtual FICollectionElement* AddBefore(FIIteratorBase& node, FICollectionElement*) {
        return Add(node);
    }
};

// Reads and stores go to the node of the present item, in the item's units. Name, attribute source,
// container, context and the rest of an entry's operations are that node's; those of the shared
// empty entry where there is none.
class FICollectionIteratorBase : public FIEntry {
 public:
    virtual const void* TypeId() const = 0;
    virtual FICollectionBase* Collection() = 0;
    // The present item, null before the first and past the last.
    virtual FICollectionElement* Item() = 0;
    virtual bool IsValid() = 0;
    // False, and past the last, when there is none; Previous of the first goes before it.
    virtual bool First() = 0;
    virtual bool Next() = 0;
    virtual bool Last() = 0;
    virtual bool Previous() = 0;
    virtual bool AtFirst() = 0;
    virtual bool AtEnd() = 0;
    // The id of the last step of the item's path; NULL without an item.
    virtual void GetKey(FIValue& out) = 0;
    // The path of ids below the top, each quoted where the language needs it.
    virtual void GetPath(FIValue& out) = 0;
    // Counted; null when the item has no node.
    virtual FIReferenceBase* GetNode() = 0;
    // The steps of the item's path below the top, each as it is written in a path; NULL for one
    // that there is not.
    virtual int Depth() = 0;
    virtual void GetStep(int level, FIValue& out) = 0;
    // How the path of an item with a node leads there: by names and keys; by the place in a list
    // where that is the id of a step; or by a place where a name was meant, that nobody has: one
    // with which the name begins, or of a node that has a name. It may be another node than the one
    // that was chosen.
    enum Way : int { kNoWay = 0, kByNames = 1, kByPlaces = 2, kByLikelyPlace = 3 };
    virtual int GetWay() = 0;
    // The item's own units of value and specification, also without a node; NULL for the node's.
    virtual void GetUnits(FIValue& unit, FIValue& spec_unit) = 0;
};

}  // namespace fixtop::inline FI
