#pragma once

// FixedCursor<Derived, Context>: a cursor over the fixed children of a level. Derived gives
//
//     static constexpr FixedNames kNames;
//
// and Context `FIEntry* MakeEntry(int index)` (not counted) and `bool IsSameList(Context& other)`.
// Positions count from 0 and are clamped to 0 .. end. Past the end the entry is the shared empty
// one.

#include <algorithm>
#include <cstring>
#include <span>

#include "framework/cursor.h"
#include "framework/empties.h"
#include "framework/entry.h"

struct FixedNames {
    std::span<const char* const> names;
    // Where a seek from the end starts.
    int end_origin;
    // The position at which AtEnd is true. A walk that stops there does not see what follows.
    int at_end;

    int End() const { return static_cast<int>(names.size()); }
};

template <class Derived, class Context>
class FixedCursor : public CountedFromZero<FICursorBase> {
 public:
    explicit FixedCursor(Context* context, int position = 0)
        : context_(Ref<Context>::Share(context)), position_(position) {}

    const void* TypeId() const override { return &kTypeId; }
    FICursorBase* Clone(bool deep) override {
        FICursorBase* clone = deep ? new Derived(context_.Get(), position_) : this;
        clone->AddRef();
        return clone;
    }
    bool Seek(int origin, int delta) override {
        GoTo(origin);
        const long long wanted = static_cast<long long>(position_) + delta;
        position_ = static_cast<int>(std::clamp<long long>(wanted, 0, Names().End()));
        return position_ < Names().End();
    }
    bool SeekName(int origin, const char* name) override {
        GoTo(origin);
        for (int i = 0; name && i < Names().End(); ++i) {
            if (std::strcmp(Names().names[i], name) != 0) continue;
            position_ = i;
            return true;
        }
        return false;
    }
    bool AtBegin() override { return position_ == 0; }
    bool AtEnd() override { return position_ == Names().at_end; }
    int Compare(FICursorPosition& other) override {
        if (other.TypeId() != TypeId()) return kNotComparable;
        auto& same = static_cast<FixedCursor&>(other);
        if (!context_->IsSameList(*same.context_)) return kNotComparable;
        return (position_ > same.position_) - (position_ < same.position_);
    }
    void GetKey(FIValue& out) override {
        if (position_ < Names().End()) {
            out.SetText(Names().names[position_]);
        } else {
            out.Clear();
        }
    }
    FIEntry* GetEntry() override {
        const bool standing = position_ < Names().End();
        FIEntry* entry = standing ? context_->MakeEntry(position_) : EmptyEntry();
        entry->AddRef();
        return entry;
    }

 private:
    static const FixedNames& Names() { return Derived::kNames; }
    void GoTo(int origin) {
        if (origin == kFromFirst) position_ = 0;
        if (origin == kFromEnd) position_ = Names().end_origin;
    }

    static inline const char kTypeId = 0;

    Ref<Context> context_;
    int position_;
};
