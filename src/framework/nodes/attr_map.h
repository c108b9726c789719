// SPDX-License-Identifier: Apache-2.0
#pragma once

// AttrMapBase<T>: gives a class of entries its attributes from one static table, and the cursor
// over that table. T declares
//
//     static std::span<const AttrRow<T>> AttributeRows();
//
// in the order in which the attributes are listed, and has AddRef, Release, GetVarSet and
// SetVarSet. A lookup takes the first row of a name; for readers a row that is not available is as
// if it did not exist.

#include <span>

#include "fixtop/entry.h"
#include "framework/nodes/attr_row.h"
#include "framework/nodes/counted.h"
#include "framework/nodes/cursor.h"
#include "framework/nodes/liveness.h"
#include "framework/nodes/shield.h"
#include "framework/nodes/small_object.h"
#include "framework/nodes/var_set_loan.h"

namespace fixtop {

// Whether the owner has lost what it stood on. Never for one that stands on nothing.
template <class T>
bool HasLostItsObject(const T& owner) {
    if constexpr (requires { owner.IsGone(); }) return owner.IsGone();
    return false;
}

template <class T>
inline const AttrRow<T>* FindAttrRow(T& owner, const AttrName& name) {
    const AttrRow<T>* row = FindAnyAttrRow<T>(name);
    return row && row->IsAvailable(owner) ? row : nullptr;
}

// Reads by name; NULL for a name that the owner does not show. An owner whose object is gone says
// so whatever is asked.
template <class T>
void ReadAttribute(T& owner, const FIValue& name, FIValue& out) {
    if (HasLostItsObject(owner)) return out.SetText(kNodeDeletedText);
    if (const AttrRow<T>* row = FindAttrRow(owner, name)) {
        row->Read(owner, out);
    } else {
        out.Clear();
    }
}

// Writes by name. A name without a row and a row without writer answer `refusal`; an owner whose
// object is gone says so whatever is written.
template <class T>
void WriteAttribute(T& owner, const FIValue& name, const FIValue& value, int mode,
                    const char* refusal, FIValue& out) {
    if (HasLostItsObject(owner)) return out.SetText(kNodeDeletedText);
    const AttrRow<T>* row = FindAnyAttrRow<T>(name);
    const bool is_taken = row && row->write && row->write(owner, value, mode, out);
    if (!is_taken) out = FIValue(refusal);
}

// Starts at count 0; the first AddRef counts the owner, the last Release gives it back. A new
// cursor stands on the first row, available or not, until it is moved. The variables that it gives
// the owner are the owner's until they go or the cursor and its copies do.
template <class T>
class AttrMapCursorBase : public FIAttributeCursorBase {
 public:
    explicit AttrMapCursorBase(T* owner) : owner_(owner), lent_(*owner), row_(First()) {}

    const void* TypeId() const override { return &kTypeId; }
    int AddRef() override {
        if (references_ == 0) owner_->AddRef();
        return ++references_;
    }
    int Release() override {
        const int left = --references_;
        if (left == 0) {
            const Ref<T> owner = Ref<T>::Adopt(owner_);
            delete this;
        }
        return left;
    }
    FIAttributeCursorBase* Clone(bool deep) override {
        AttrMapCursorBase* clone = this;
        if (deep) {
            clone = new Shielded<AttrMapCursorBase>(owner_);
            clone->row_ = row_;
            clone->lent_.Share(lent_);
        }
        return HandOut(clone);
    }
    // From the end nothing moves back: a step stops at once there. An owner whose object is gone
    // shows no rows.
    bool Seek(int origin, int delta) override {
        if (HasLostItsObject(*owner_)) origin = kFromEnd;
        if (origin == kFromFirst) {
            row_ = First();
            while (row_ != End() && !row_->IsAvailable(*owner_)) ++row_;
        } else if (origin == kFromEnd) {
            row_ = End();
        }
        int left = delta;
        const int step = delta > 0 ? 1 : -1;
        while (row_ != End() && left != 0 && !(step < 0 && row_ == First())) {
            row_ += step;
            if (row_ != End() && row_->IsAvailable(*owner_)) left -= step;
        }
        return row_ != End() && left == 0;
    }
    bool SeekName(int, const char* name) override {
        const bool is_gone = HasLostItsObject(*owner_);
        const AttrRow<T>* found = is_gone ? nullptr : FindAttrRow(*owner_, name);
        row_ = found ? found : End();
        return found != nullptr;
    }
    bool SeekValue(int origin, FIEntry& entry) override {
        FIValue name;
        entry.GetName(name);
        return SeekName(origin, name.CStr());
    }
    bool AtBegin() override { return row_ == First(); }
    bool AtEnd() override { return row_ == End(); }
    int Compare(FICursorPosition& other) override {
        const int order = CompareKeys(*this, other);
        const bool is_gone = order != 0 && (HasLostItsObject(*owner_) || HasLost(other));
        return is_gone ? kNotComparable : order;
    }
    void GetKey(FIValue& out) override {
        if (AtEnd()) {
            out.Clear();
        } else {
            out.SetText(row_->name);
        }
    }
    void GetValue(FIValue& out) override {
        if (AtEnd()) {
            out.Clear();
        } else if (HasLostItsObject(*owner_)) {
            owner_->GetAttribute(FIValue(row_->name), out);
        } else {
            row_->Read(*owner_, out);
        }
    }
    FIVarSet* GetVarSet() override { return owner_->GetVarSet(); }
    void SetVarSet(FIVarSet* vars) override { lent_.Lend(vars); }

 private:
    static const AttrRow<T>* First() { return T::AttributeRows().data(); }
    static const AttrRow<T>* End() { return First() + T::AttributeRows().size(); }

    bool HasLost(FICursorPosition& other) const {
        return other.TypeId() == TypeId() &&
               HasLostItsObject(*static_cast<AttrMapCursorBase&>(other).owner_);
    }

    static inline const char kTypeId = 0;
    T* owner_;
    LentVarSet<T> lent_;
    const AttrRow<T>* row_;
    int references_ = 0;
};

// The attribute source of T: shares the owner's reference count.
template <class T>
class AttrMapBase : public FIAttributeSource {
 public:
    FIAttributeCursorBase* MakeCursor() override {
        return HandOut(new Shielded<AttrMapCursorBase<T>>(static_cast<T*>(this)));
    }
};

// An entry whose attributes come from T's table: one count for both interfaces. T derives from it,
// gives AttributeRows, GetName and GetContext, and overrides what differs from the base entry.
// Beside is as that of CountedFromZero.
template <class T, class Beside = NothingBeside>
class AttrMapEntry : public FIEntry, public AttrMapBase<T>, public SmallObject {
 public:
    int AddRef() final { return ++references_; }
    int Release() final {
        const int left = --references_;
        if (left <= 0) delete this;
        return left;
    }
    void GetAttribute(const FIValue& name, FIValue& out) override {
        ReadAttribute(static_cast<T&>(*this), name, out);
    }
    FIAttributeSource* GetAttributeSource() override {
        AddRef();
        return this;
    }

 private:
    int references_ = 0;

 protected:
    [[no_unique_address]] Beside beside_;
};

}  // namespace fixtop
