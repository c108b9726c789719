#pragma once

// NumberedCursor<Derived, Context>: what cursors over a numbered list have in common. Positions
// count from 0; the count of elements is the end. There, and wherever else no element is, the key
// is NULL and the entry the shared empty one. A family gives its seeks, End and ReadKey; its
// Context gives
//
//     FIEntry* MakeEntry(int position);         // not counted
//     bool IsSameList(const Context& other) const;
//     bool IsGone() const;                      // what has the list does not live any more

#include "framework/cursor.h"
#include "framework/empties.h"
#include "framework/entry.h"

template <class Derived, class Context>
class NumberedCursor : public CountedFromZero<FICursorBase> {
 public:
    explicit NumberedCursor(Context* context, int position = 0)
        : context_(Ref<Context>::Share(context)), position_(position) {}

    const void* TypeId() const override { return &kTypeId; }
    FICursorBase* Clone(bool deep) override {
        FICursorBase* clone = deep ? new Derived(context_.Get(), position_) : this;
        return HandOut(clone);
    }
    bool AtBegin() override { return position_ == 0; }
    bool AtEnd() override { return position_ == End(); }
    int Compare(FICursorPosition& other) override {
        if (other.TypeId() != TypeId()) return kNotComparable;
        auto& same = static_cast<NumberedCursor&>(other);
        if (!context_->IsSameList(*same.context_)) return kNotComparable;
        return (position_ > same.position_) - (position_ < same.position_);
    }
    void GetKey(FIValue& out) override {
        if (StandsOnElement()) {
            ReadKey(position_, out);
        } else {
            out.Clear();
        }
    }
    FIEntry* GetEntry() override {
        FIEntry* entry = StandsOnElement() ? context_->MakeEntry(position_) : EmptyEntry();
        return HandOut(entry);
    }

 protected:
    virtual int End() const = 0;
    virtual void ReadKey(int position, FIValue& out) const = 0;

    Context& List() const { return *context_; }

 private:
    static inline const char kTypeId = 0;

    bool StandsOnElement() const {
        return position_ >= 0 && position_ < End() && !context_->IsGone();
    }

    Ref<Context> context_;

 protected:
    int position_;
};
