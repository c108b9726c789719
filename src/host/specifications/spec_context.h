// SPDX-License-Identifier: Apache-2.0
#pragma once

// HSpecContext, HSpecCursorBase, HSpecFilter: the elements of a specification that have something
// to show, in the host's order.

#include "fixtop/ref.h"
#include "framework/nodes/counted.h"
#include "host/lists/list_cursor.h"
#include "host/lists/list_position.h"
#include "host/node_above.h"
#include "host/specifications/spec_type.h"
#include "host/specifications/spec_view.h"

namespace fixtop {

// Lets through what has a type. A process variable comes and goes with its value, without a change
// of the list.
struct HSpecFilter {
    using Element = host::CSpecElement;
    bool Shows(host::CSpecElement& element) const {
        return HSpecType::Classify(element) != HSpecType::kNone;
    }
    static const char* Name(host::CSpecElement& element) { return element.tag.CStr(); }
    int Id() const { return 0; }
    // Elements live as long as what was filled in.
    static std::uint64_t Number(const host::CSpecElement&) { return 0; }
};

// The walk over the elements. It looks for an element one by one, as what the filter lets through
// is not bound to the revision of the list; several elements may have one tag.
class SpecWalk : public ListPosition<HSpecFilter> {
 public:
    explicit SpecWalk(const host::LinkedList* list) : ListPosition(list), list_(list) {}
    static const char* Name(host::CSpecElement& element) { return HSpecFilter::Name(element); }

    host::CSpecElement* Current() {
        host::CSpecElement* element = ListPosition::Current();
        return place_ == kUnknown ? Note(element) : element;
    }
    host::CSpecElement* First() { return Note(ListPosition::First()); }
    host::CSpecElement* Last() { return Note(ListPosition::Last()); }
    host::CSpecElement* Next() { return Note(ListPosition::Next()); }
    host::CSpecElement* Prev() { return Note(ListPosition::Prev()); }

    // To the first element that `matches`, or to the next one from here on, the present one
    // included. Off the list when there is none.
    template <class Matches>
    host::CSpecElement* FindIf(bool from_here, Matches matches) {
        host::CSpecElement* element = from_here ? Current() : First();
        while (element && !matches(*element)) element = Next();
        return element;
    }
    host::CSpecElement* SeekName(const char* name, bool from_here) {
        return FindIf(from_here, [name](const auto& element) { return element.tag == name; });
    }
    // Also of positions in two lists of one specification, which the host has filled twice.
    int Compare(SpecWalk& other);
    // The same of two elements, by their places in the lists.
    int CompareElements(const host::CSpecElement& own, const SpecWalk& other,
                        const host::CSpecElement& others) const;
    // The same place of one specification; asks nothing of the elements.
    bool IsOnSame(const SpecWalk& other) const { return place_ == other.place_; }
    // Counted from 0 in the host's list.
    int PlaceOf(const host::CSpecElement& element) const;
    // How many elements before it have its tag.
    int NamesakesBefore(const host::CSpecElement& element) const;

 private:
    static constexpr int kUnknown = -2;
    static constexpr int kNowhere = -1;

    host::CSpecElement* Note(host::CSpecElement* element) {
        place_ = element ? PlaceOf(*element) : kNowhere;
        return element;
    }

    const host::LinkedList* list_;
    int place_ = kUnknown;
};

class HSpecContext : public CountedFromZero<FIContext>, public LivingNode {
 public:
    // The elements in `info`, a part of `fill`, which describes `owner`. Without a fill the info
    // outlives the context.
    HSpecContext(const host::CSpecInfo* info, host::Viewable* owner, NodeAbove above,
                 Ref<HSpecFill> fill = {});

    FICursorBase* MakeCursor(int kind) override;
    FIEntry* MakeEntry(host::CSpecElement& element);
    FIEntry* MakeEntry(host::CSpecElement& element, const SpecWalk&) { return MakeEntry(element); }

    // A walk of its own over the elements.
    SpecWalk Elements() const { return SpecWalk(info_->Elements()); }
    // Null when it is gone.
    host::Viewable* Owner() const { return owner_.Get(); }
    const Ref<HSpecFill>& Fill() const { return fill_; }
    const Ref<CaseLife>& CaseRecord() const { return owner_.Life(); }
    bool IsGone() const final { return owner_.IsGone() || (fill_ && fill_->IsGone()); }
    Liveness* Life() const final { return owner_.Life().Get(); }
    // The host fills a list anew for everyone who asks, so the object and the place within its
    // specification tell the lists apart.
    bool IsSameList(const HSpecContext& other) const;
    const HovexOptions* Options() const { return above_.Options(); }
    bool FollowsAttachments() const { return above_.FollowsAttachments(); }

 private:
    const host::CSpecInfo* info_;
    HostObject<host::Viewable> owner_;
    NodeAbove above_;
    Ref<HSpecFill> fill_;
};

class HSpecCursorBase : public ListCursor<HSpecCursorBase, SpecWalk, HSpecContext> {
 public:
    using ListCursor::ListCursor;

    // The element of the given entry itself; false for an entry of another family.
    bool SeekValue(int origin, FIEntry& entry) override;
};

// Whether both are nodes of one element: of one object, at the same place of its specification.
bool IsSameElement(FIEntry& one, FIEntry& other);

}  // namespace fixtop
