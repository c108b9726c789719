#pragma once

// ListCursor<Derived, Walk, Context>: the cursor of every family that lists elements of the host's
// lists. Walk is a copyable position with First, Last, Next, Prev, Current, AtBegin, SeekName and
// Compare; Context makes the entries:
//
//     FIEntry* MakeEntry(Element& element);    // not counted
//     bool IsSameList(const Context& other);
//
// Two objects may have one list of the host, so that the lists are not what tells them apart.
// A seek that runs off the list goes back to the first element and answers false; a search by name
// that finds nothing leaves the cursor at the end.

#include "framework/cursor.h"
#include "framework/empties.h"
#include "framework/entry.h"

template <class Derived, class Walk, class Context>
class ListCursor : public CountedFromZero<FICursorBase> {
 public:
    ListCursor(Context* context, const Walk& walk)
        : context_(Ref<Context>::Share(context)), walk_(walk) {}

    const void* TypeId() const override { return &kTypeId; }
    FICursorBase* Clone(bool deep) override {
        FICursorBase* clone = deep ? new Derived(context_.Get(), walk_) : this;
        return HandOut(clone);
    }
    bool Seek(int origin, int delta) override {
        if (origin == kFromFirst) walk_.First();
        if (origin == kFromEnd) walk_.Last();
        for (; delta > 0 && walk_.Current(); --delta) walk_.Next();
        for (; delta < 0 && walk_.Current(); ++delta) walk_.Prev();
        if (walk_.Current()) return true;
        walk_.First();
        return false;
    }
    bool SeekName(int origin, const char* name) override {
        return name && walk_.SeekName(name, origin == kFromPresent) != nullptr;
    }
    bool AtBegin() override { return walk_.AtBegin(); }
    bool AtEnd() override { return !walk_.Current(); }
    int Compare(FICursorPosition& other) override {
        if (&other == this) return 0;
        if (other.TypeId() != TypeId()) return kNotComparable;
        auto& same = static_cast<ListCursor&>(other);
        if (!context_->IsSameList(*same.context_)) return kNotComparable;
        return walk_.Compare(same.walk_);
    }
    void GetKey(FIValue& out) override {
        if (auto* element = walk_.Current()) {
            out.SetText(Walk::Name(*element));
        } else {
            out.Clear();
        }
    }
    FIEntry* GetEntry() override {
        auto* element = walk_.Current();
        FIEntry* entry = element ? context_->MakeEntry(*element) : EmptyEntry();
        return HandOut(entry);
    }

 private:
    static inline const char kTypeId = 0;

    Ref<Context> context_;

 protected:
    Walk walk_;
};
