// SPDX-License-Identifier: Apache-2.0
#pragma once

// ListCursor<Derived, Walk, Context>: the cursor of every family that lists elements of the host's
// lists. Walk is a copyable position with First, Last, Next, Prev, Current, AtBegin, SeekName,
// SeekPlace, Compare and IsOnSame; Context makes the entries:
//
//     FIEntry* MakeEntry(Element& element, const Walk& walk);  // the walk is on it; not counted
//     bool IsSameList(const Context& other);
//     bool IsGone();  // what has the list does not live any more
//
// Two objects may have one list of the host, so that the lists are not what tells them apart.
// A seek that runs off the list goes back to the first element and answers false; a search by name
// that finds nothing leaves the cursor at the end. There it is too when its element is gone, so
// that a seek from the present goes back to the first; a list that is gone is empty.

#include "fixtop/cursor.h"
#include "fixtop/entry.h"
#include "framework/nodes/counted.h"
#include "framework/nodes/empties.h"
#include "framework/nodes/shield.h"

namespace fixtop {

template <class Derived, class Walk, class Context>
class ListCursor : public CountedFromZero<FICursorBase> {
 public:
    ListCursor(Context* context, const Walk& walk)
        : context_(Ref<Context>::Share(context)), walk_(walk) {}

    // Whether the cursor is one of this family, in the list of the context and like the walk.
    static bool IsLike(const FICursorBase& cursor, const Context& context, const Walk& walk) {
        if (cursor.TypeId() != &kTypeId) return false;
        const auto& same = static_cast<const ListCursor&>(cursor);
        return same.context_.Get() == &context && same.walk_.IsLike(walk);
    }

    const void* TypeId() const override { return &kTypeId; }
    FICursorBase* Clone(bool deep) override {
        return HandOut(deep ? new Shielded<Derived>(context_.Get(), walk_) : this);
    }
    bool Seek(int origin, int delta) override {
        if (context_->IsGone()) return false;
        if (origin == kFromFirst) delta = StandAt(delta);
        if (origin == kFromEnd) walk_.Last();
        // A step looks itself whether its element is still there.
        bool stands = delta != 0 || walk_.Current();
        for (; delta > 0 && stands; --delta) stands = walk_.Next();
        for (; delta < 0 && stands; ++delta) stands = walk_.Prev();
        if (!stands) walk_.First();
        return stands;
    }
    bool SeekName(int origin, const char* name) override {
        const bool may_seek = name && !context_->IsGone();
        return may_seek && walk_.SeekName(name, origin == kFromPresent) != nullptr;
    }
    bool AtBegin() override { return context_->IsGone() || walk_.AtBegin(); }
    bool AtEnd() override { return !Present(); }
    int Compare(FICursorPosition& other) override {
        if (&other == this) return 0;
        if (other.TypeId() != TypeId()) return kNotComparable;
        auto& same = static_cast<ListCursor&>(other);
        if (!context_->IsSameList(*same.context_)) return kNotComparable;
        if (context_->IsGone() || same.context_->IsGone()) {
            return walk_.IsOnSame(same.walk_) ? 0 : kNotComparable;
        }
        return walk_.Compare(same.walk_);
    }
    void GetKey(FIValue& out) override {
        if (auto* element = Present()) {
            out.SetText(Walk::Name(*element));
        } else {
            out.Clear();
        }
    }
    FIEntry* GetEntry() override {
        auto* element = Present();
        FIEntry* entry = element ? context_->MakeEntry(*element, walk_) : EmptyEntry();
        return HandOut(entry);
    }

 private:
    static inline const char kTypeId = 0;

    // On the first element, or on the one of that place; answers the steps that are left.
    int StandAt(int place) {
        if (place <= 0) {
            walk_.First();
            return place;
        }
        auto wanted = static_cast<std::size_t>(place);
        walk_.SeekPlace(wanted);
        return 0;
    }
    auto* Present() { return context_->IsGone() ? nullptr : walk_.Current(); }

    Ref<Context> context_;

 protected:
    Walk walk_;
};

}  // namespace fixtop
