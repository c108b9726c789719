#pragma once

// ListPosition<View>: a place in a host list as a view shows it: the elements that the view lets
// through, in list order. A View has
//
//     using Element = ...;
//     bool Shows(Element& element) const;
//     static const char* Name(Element& element);
//     int Id() const;              // tells apart the views of one list
//
// A new position stands on the first element. Reading the present element does not touch the list.
// When the list has changed since the last move, the element is looked up anew before moving on; a
// position whose element is gone is off the list.

#include <cstring>

#include "framework/cursor.h"
#include "host/interface/list.h"
#include "host/list_index.h"

template <class View>
class ListPosition {
 public:
    using Element = typename View::Element;

    explicit ListPosition(const host::LinkedList* list, View view = View())
        : iterator_(list), view_(view) {}

    // Null off the list.
    Element* Current() {
        Start();
        return element_;
    }
    Element* First() { return OnwardFrom(iterator_.Reset()); }
    Element* Last() { return BackFrom(iterator_.Last()); }
    Element* Next() { return Find() ? OnwardFrom(iterator_.Next()) : nullptr; }
    Element* Prev() { return Find() ? BackFrom(iterator_.Prev()) : nullptr; }

    bool AtBegin() { return Current() == ListPosition(iterator_.List(), view_).Current(); }
    // To the first element of this name, or to the next one from here on, the present one included.
    // Off the list when there is none.
    Element* SeekName(const char* name, bool from_here) {
        if (from_here) return WalkToName(Find() ? element_ : nullptr, name);
        if (!iterator_.EntryAt(ListIndex::kWalkedLength)) return WalkToName(First(), name);
        const ListIndex::Answer answer = ListIndex::Find(
            *iterator_.List(), view_.Id(),
            [this](void* element) { return NameIfShown(static_cast<Element*>(element)); }, name);
        if (!answer.known) return WalkToName(First(), name);
        return Stand(iterator_.MoveTo(answer.holder));
    }
    bool IsSameList(const ListPosition& other) const {
        return iterator_.List() == other.iterator_.List();
    }
    // Order in the list: -1, 0, 1, or not comparable for different lists.
    int Compare(ListPosition& other) {
        if (!IsSameList(other)) return kNotComparable;
        const Element* own = Current();
        const Element* others = other.Current();
        if (own == others) return 0;
        if (!own || !others) return own ? -1 : 1;
        ListPosition ahead(*this);
        while (const Element* element = ahead.Next()) {
            if (element == others) return -1;
        }
        return 1;
    }

 private:
    // Only a position that was never moved stands nowhere yet: finding the first element of a view
    // can take a walk, which a search by name does not need.
    void Start() {
        if (!started_) First();
    }
    Element* Stand(void* element) {
        started_ = true;
        revision_ = iterator_.List() ? iterator_.List()->Revision() : 0;
        return element_ = static_cast<Element*>(element);
    }
    Element* OnwardFrom(void* element) {
        while (element && !view_.Shows(*static_cast<Element*>(element))) element = iterator_.Next();
        return Stand(element);
    }
    Element* BackFrom(void* element) {
        while (element && !view_.Shows(*static_cast<Element*>(element))) element = iterator_.Prev();
        return Stand(element);
    }
    // Makes the host's position that of the present element; false off the list.
    bool Find() {
        Start();
        if (!element_) return false;
        if (iterator_.List()->Revision() == revision_) return true;
        const void* wanted = element_;
        void* element = iterator_.Reset();
        while (element && element != wanted) element = iterator_.Next();
        return Stand(element) != nullptr;
    }
    const char* NameIfShown(Element* element) const {
        return view_.Shows(*element) ? View::Name(*element) : nullptr;
    }
    // Walks on until the name is met or the list ends.
    Element* WalkToName(Element* element, const char* name) {
        while (element && std::strcmp(View::Name(*element), name) != 0) {
            element = OnwardFrom(iterator_.Next());
        }
        return element;
    }

    host::LinkedListIterator iterator_;
    View view_;
    Element* element_ = nullptr;
    std::uint64_t revision_ = 0;
    bool started_ = false;
};
