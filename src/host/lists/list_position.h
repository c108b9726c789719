// SPDX-License-Identifier: Apache-2.0
#pragma once

// ListPosition<View>: a place in a host list as a view shows it: the elements that the view lets
// through, in list order. A View has
//
//     using Element = ...;
//     bool Shows(Element& element) const;
//     static const char* Name(Element& element);
//     int Id() const;              // tells apart the views of one list
//     static std::uint64_t Number(const Element& element);    // its own, 0 for none
//
// A new position stands on the first element. When the list has changed since the last move, the
// element is looked up anew, by its number where it has one, before it is used; a position whose
// element is gone is off the list, and does not move on from there.

#include <cstddef>
#include <cstring>

#include "fixtop/cursor.h"
#include "fixtop/host/services.h"
#include "host/adapter.h"
#include "host/lists/list_index.h"

namespace fixtop {

// Where in its list an element stood that a position stands on, beside what it is itself.
struct ListSpot {
    const host::ListHolder* holder = nullptr;
    std::uint64_t revision = 0;
};

template <class View>
class ListPosition {
 public:
    using Element = typename View::Element;

    explicit ListPosition(const host::LinkedList* list, View view = View())
        : iterator_(list), view_(view) {}
    // As one that stands, or stood, on the element with this number at the spot.
    ListPosition(const host::LinkedList* list, View view, ListSpot spot, void* element,
                 std::uint64_t number)
        : iterator_(list, spot.holder),
          address_(element),
          number_(number),
          revision_(spot.revision),
          view_(view),
          started_(true) {}

    ListSpot Spot() const { return {iterator_.Cursor(), revision_}; }
    // Nothing tells one from the other.
    bool IsLike(const ListPosition& other) const {
        return IsOnSame(other) && view_.Id() == other.view_.Id() &&
               iterator_.Cursor() == other.iterator_.Cursor() && revision_ == other.revision_ &&
               started_ == other.started_ && is_lost_ == other.is_lost_;
    }

    // Null off the list.
    Element* Current() {
        Start();
        if (Known() && HasListChanged()) Recall();
        return Known();
    }
    // The element on which it stood does not live any more.
    bool HasLost() { return !Current() && is_lost_; }
    Element* First() { return Stand(Onward(iterator_.Reset())); }
    Element* Last() { return Stand(Back(iterator_.Last())); }
    // From an element that is lost, and from off the list, nowhere.
    Element* Next() { return Find() ? StandOn(Onward(iterator_.Next())) : nullptr; }
    Element* Prev() { return Find() ? StandOn(Back(iterator_.Prev())) : nullptr; }

    bool AtBegin() { return Current() == ListPosition(iterator_.List(), view_).Current(); }
    // To the first element of this name, or to the next one from here on, the present one included.
    // Off the list when there is none.
    Element* SeekName(const char* name, bool from_here) {
        if (from_here) return WalkToName(Find() ? Known() : nullptr, name);
        ListIndex* index = Index();
        const ListIndex::Answer answer =
            index ? index->Find(ShownNames(), name) : ListIndex::Answer();
        if (!answer.known) return WalkToName(First(), name);
        return Stand(iterator_.MoveTo(answer.holder));
    }
    // To the element of a place, counted from 0. Off the list when there is none; `place` is then
    // what it is behind the end.
    Element* SeekPlace(std::size_t& place) {
        if (const ListIndex* index = Index()) {
            const host::ListHolder* holder = index->At(place);
            if (!holder) place -= index->Count();
            return Stand(iterator_.MoveTo(holder));
        }
        Element* element = First();
        for (; element && place > 0; --place) element = Next();
        return element;
    }
    bool IsSameList(const ListPosition& other) const {
        return iterator_.List() == other.iterator_.List();
    }
    // Whether both stand, or stood, on one element; asks nothing of it.
    bool IsOnSame(const ListPosition& other) const {
        return IsSameList(other) && address_ == other.address_ && number_ == other.number_;
    }
    // Order in the list: -1, 0, 1, or not comparable for different lists and for one that has lost
    // its element, but to one that stood on the same.
    int Compare(ListPosition& other) {
        if (!IsSameList(other)) return kNotComparable;
        if (HasLost() || other.HasLost()) return IsOnSame(other) ? 0 : kNotComparable;
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
    // On what the list has at its present revision.
    Element* Stand(void* element) {
        started_ = true;
        revision_ = ListRevision();
        return StandOn(element);
    }
    // The same where the list was just seen not to have changed.
    Element* StandOn(void* element) {
        is_lost_ = false;
        address_ = element;
        number_ = element ? View::Number(*Known()) : 0;
        return Known();
    }
    // What it stood on when it last looked; null off the list.
    Element* Known() const { return is_lost_ ? nullptr : static_cast<Element*>(address_); }
    std::uint64_t ListRevision() const {
        return iterator_.List() ? iterator_.List()->Revision() : 0;
    }
    bool HasListChanged() const { return ListRevision() != revision_; }
    // One that has a number of its own is asked after by it; the place in the list is found when it
    // is needed. Another is there when the list has it.
    void Recall() {
        if (number_ != 0) {
            if (!Lives(number_)) Lose();
        } else {
            Find();
        }
    }
    static bool Lives(std::uint64_t number) {
        host::HostServices* services = TheAdapter().Services();
        return services && services->Lives(number);
    }
    bool Lose() {
        is_lost_ = true;
        return false;
    }
    // To the next element that the view shows, this one included, or off the list.
    void* Onward(void* element) {
        while (element && !view_.Shows(*static_cast<Element*>(element))) element = iterator_.Next();
        return element;
    }
    void* Back(void* element) {
        while (element && !view_.Shows(*static_cast<Element*>(element))) element = iterator_.Prev();
        return element;
    }
    // Makes the host's position that of the present element; false off the list.
    bool Find() {
        Start();
        if (!Known() || !HasListChanged()) return Known() != nullptr;
        const std::uint64_t number = number_;
        if (number != 0 && !Lives(number)) return Lose();
        void* element = iterator_.Reset();
        while (element && element != address_) element = iterator_.Next();
        return element ? Stand(element) != nullptr : Lose();
    }
    const char* NameIfShown(Element* element) const {
        return view_.Shows(*element) ? View::Name(*element) : nullptr;
    }
    ListIndex::NameOf ShownNames() const {
        return {this, [](const void* self, void* element) {
                    const auto* place = static_cast<const ListPosition*>(self);
                    return place->NameIfShown(static_cast<Element*>(element));
                }};
    }
    // Null where the list is to be walked.
    ListIndex* Index() const {
        if (!iterator_.EntryAt(ListIndex::kWalkedLength)) return nullptr;
        return ListIndex::Over(*iterator_.List(), view_.Id(), ShownNames());
    }
    // Walks on until the name is met or the list ends.
    Element* WalkToName(Element* element, const char* name) {
        while (element && std::strcmp(View::Name(*element), name) != 0) {
            element = Stand(Onward(iterator_.Next()));
        }
        return element;
    }

    host::LinkedListIterator iterator_;
    // Stay known of an element that is lost.
    void* address_ = nullptr;
    std::uint64_t number_ = 0;
    std::uint64_t revision_ = 0;
    [[no_unique_address]] View view_;
    bool started_ = false;
    bool is_lost_ = false;
};

}  // namespace fixtop
