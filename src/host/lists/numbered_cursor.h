// SPDX-License-Identifier: Apache-2.0
#pragma once

// NumberedCursor<Derived, Context>: what cursors over a numbered list have in common. Positions
// count from 0; the count of elements is the end. There, and wherever else no element is, the key
// is NULL and the entry the shared empty one. A family gives its seeks, End and ReadKey; its
// Context gives
//
//     FIEntry* MakeEntry(int position);         // not counted
//     bool IsSameList(const Context& other) const;
//     bool IsGone() const;                      // what has the list does not live any more
//
// and, where the elements are objects that come and go,
//
//     std::uint64_t NumberAt(int position) const;    // the object's own; 0 for none
//     Liveness* Life() const;
//
// A cursor follows its object then, and is at the end when that is gone; it does not move on from
// there.

#include "fixtop/cursor.h"
#include "fixtop/entry.h"
#include "framework/nodes/counted.h"
#include "framework/nodes/empties.h"
#include "framework/nodes/liveness.h"
#include "framework/nodes/shield.h"

namespace fixtop {

template <class Derived, class Context>
class NumberedCursor : public CountedFromZero<FICursorBase> {
 public:
    explicit NumberedCursor(Context* context, int position = 0)
        : context_(Ref<Context>::Share(context)), position_(position) {
        NoteObject();
    }

    const void* TypeId() const override { return &kTypeId; }
    FICursorBase* Clone(bool deep) override {
        if (!deep) return HandOut(static_cast<FICursorBase*>(this));
        auto* clone = new Shielded<Derived>(context_.Get(), position_);
        static_cast<NumberedCursor*>(clone)->object_ = object_;
        return HandOut(static_cast<FICursorBase*>(clone));
    }
    bool AtBegin() override { return Position() == 0; }
    bool AtEnd() override { return IsGone() || Position() == End(); }
    int Compare(FICursorPosition& other) override {
        if (other.TypeId() != TypeId()) return kNotComparable;
        auto& same = static_cast<NumberedCursor&>(other);
        if (!context_->IsSameList(*same.context_)) return kNotComparable;
        const int own = Position();
        const int others = same.Position();
        const int order = (own > others) - (own < others);
        const bool may_order = !IsGone() && !same.IsGone() && !HasLost() && !same.HasLost();
        if (may_order) return order;
        return order == 0 && object_.number == same.object_.number ? 0 : kNotComparable;
    }
    void GetKey(FIValue& out) override {
        if (StandsOnElement()) {
            ReadKey(position_, out);
        } else {
            out.Clear();
        }
    }
    FIEntry* GetEntry() override {
        return HandOut(StandsOnElement() ? context_->MakeEntry(position_) : EmptyEntry());
    }

 protected:
    // The object that the cursor stands on, where objects come and go.
    struct Object {
        std::uint64_t number = 0;
        std::uint64_t revision = 0;
        bool is_lost = false;
    };

    virtual int End() const = 0;
    virtual void ReadKey(int position, FIValue& out) const = 0;

    Context& List() const { return *context_; }
    // The list is: nothing moves there.
    bool IsGone() const { return context_->IsGone(); }
    // Where the element is by now.
    int Position() {
        if constexpr (kHasObjects) {
            if (object_.number != 0 && !Life()->IsCurrent(object_.revision)) FollowObject();
        }
        return position_;
    }
    // After a move; answers whether it stands on an element.
    bool Stand(int position) {
        position_ = position;
        NoteObject();
        return position_ >= 0 && position_ < End();
    }
    bool HasLost() {
        Position();
        return object_.is_lost;
    }

 private:
    static constexpr bool kHasObjects = requires(const Context& list) { list.NumberAt(0); };
    static inline const char kTypeId = 0;

    Liveness* Life() const { return context_->Life(); }
    bool StandsOnElement() {
        const int position = Position();
        return position >= 0 && position < End() && !IsGone();
    }
    void NoteObject() {
        if constexpr (kHasObjects) {
            object_ = {context_->NumberAt(position_), Life() ? Life()->Revision() : 0, false};
        }
    }
    void FollowObject() {
        object_.revision = Life()->Revision();
        const bool is_here = position_ >= 0 && context_->NumberAt(position_) == object_.number;
        if (is_here || object_.is_lost) return;
        const int end = End();
        position_ = 0;
        while (position_ < end && context_->NumberAt(position_) != object_.number) ++position_;
        object_.is_lost = position_ == end;
    }

    Ref<Context> context_;

 protected:
    int position_;

 private:
    Object object_;
};

}  // namespace fixtop
