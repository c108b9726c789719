// SPDX-License-Identifier: Apache-2.0
#pragma once

// The host's lists. A list belongs to the host; an iterator is a copyable position in it.

#include <cstdint>

namespace fixtop::host {

// A place in a list. Its first word is the element; the rest is the host's.
struct ListHolder {
    void* element = nullptr;
};

// A list of host elements in the host's own order.
class LinkedList {
 public:
    // First, last and neighbouring holders; null off the list. A holder passed in is one that the
    // list answered since its Revision last changed.
    virtual const ListHolder* FirstHolder() const = 0;
    virtual const ListHolder* LastHolder() const = 0;
    virtual const ListHolder* HolderAfter(const ListHolder* holder) const = 0;
    virtual const ListHolder* HolderBefore(const ListHolder* holder) const = 0;
    // The n-th element counted from 0, null beyond the end.
    virtual void* EntryAt(unsigned index) const = 0;

    // A number that changes whenever an element is added, removed, moved or renamed, and that no
    // other list of the process ever answers. Zero means that the host does not keep track: the
    // adapter then builds no index over the list and walks it every time.
    virtual std::uint64_t Revision() const { return 0; }

 protected:
    ~LinkedList() = default;
};

// A position in a list. It does not own the list; after the list's Revision has changed, only
// Reset and Last may be called.
class LinkedListIterator {
 public:
    LinkedListIterator() = default;
    explicit LinkedListIterator(const LinkedList* list) : list_(list) {}
    // Where another one stood, by what its Cursor answered; asks nothing of it.
    LinkedListIterator(const LinkedList* list, const ListHolder* holder)
        : list_(list), holder_(holder) {}

    // Each moves and answers the element stood on, or null off the list.
    void* Reset() { return Stand(list_ ? list_->FirstHolder() : nullptr); }
    void* Last() { return Stand(list_ ? list_->LastHolder() : nullptr); }
    void* Next() { return Stand(holder_ ? list_->HolderAfter(holder_) : nullptr); }
    void* Prev() { return Stand(holder_ ? list_->HolderBefore(holder_) : nullptr); }

    // The current holder, null off the list.
    const ListHolder* Cursor() const { return holder_; }
    // Goes to a holder that Cursor answered for the same list at the same Revision.
    void* MoveTo(const ListHolder* holder) { return Stand(holder); }
    // The n-th element, without moving.
    void* EntryAt(unsigned index) const { return list_ ? list_->EntryAt(index) : nullptr; }
    const LinkedList* List() const { return list_; }

 private:
    void* Stand(const ListHolder* holder) {
        holder_ = holder;
        return holder ? holder->element : nullptr;
    }

    const LinkedList* list_ = nullptr;
    const ListHolder* holder_ = nullptr;
};

// The same with the element's type known.
template <class Element>
class TypedListIterator : public LinkedListIterator {
 public:
    using LinkedListIterator::LinkedListIterator;
    Element* Reset() { return static_cast<Element*>(LinkedListIterator::Reset()); }
    Element* Last() { return static_cast<Element*>(LinkedListIterator::Last()); }
    Element* Next() { return static_cast<Element*>(LinkedListIterator::Next()); }
    Element* Prev() { return static_cast<Element*>(LinkedListIterator::Prev()); }
    Element* MoveTo(const ListHolder* holder) {
        return static_cast<Element*>(LinkedListIterator::MoveTo(holder));
    }
    Element* EntryAt(unsigned index) const {
        return static_cast<Element*>(LinkedListIterator::EntryAt(index));
    }
    Element* Current() const {
        return Cursor() ? static_cast<Element*>(Cursor()->element) : nullptr;
    }
};

class Viewable;
struct VariableNameInfo;

// Over a flowsheet's objects. The elements are Viewable*.
using FlowSheetObjectIterator = TypedListIterator<Viewable>;
// Over an object's variable list.
using VariableNameIterator = TypedListIterator<VariableNameInfo>;

}  // namespace fixtop::host
