// SPDX-License-Identifier: Apache-2.0
#pragma once

// VarSetLoan: a variable set that is kept for longer than a call, null once the set is gone.
// LentVarSet: the same of a set that was handed on to an entry, from which it is taken back then.
//
// A set that is kept by nobody costs nothing; loans are linked in a list of the set.

#include "fixtop/var_set.h"

namespace fixtop {

class VarSetLoan {
 public:
    VarSetLoan() = default;
    explicit VarSetLoan(FIVarSet* set) { Take(set); }
    VarSetLoan(const VarSetLoan&) = delete;
    VarSetLoan& operator=(const VarSetLoan&) = delete;
    virtual ~VarSetLoan() { Drop(); }

    FIVarSet* Get() const { return set_; }
    // In place of the one before. Null is none.
    void Take(FIVarSet* set) {
        Drop();
        if (set) Link(*set);
    }

 protected:
    // Whether the set is also lent to this borrower in another loan.
    bool IsShared(const void* borrower) const;

 private:
    friend FIVarSet;

    virtual const void* Borrower() const { return nullptr; }
    // The set of the loan goes; the loan is ended already.
    virtual void OnGone(FIVarSet&) {}

    void Link(FIVarSet& set);
    void Unlink();
    void Drop() {
        if (set_) Unlink();
    }

    FIVarSet* set_ = nullptr;
    VarSetLoan* next_ = nullptr;
    VarSetLoan** link_ = nullptr;  // what points at this loan: the set or the loan before
};

// Owner has GetVarSet and SetVarSet, and outlives the loan. What somebody else has given it in the
// meantime stays, and so does a set that another loan still lends it.
template <class Owner>
class LentVarSet final : public VarSetLoan {
 public:
    explicit LentVarSet(Owner& owner) : owner_(owner) {}
    ~LentVarSet() override {
        if (Get() && !IsShared(&owner_)) TakeBack(*Get());
    }

    void Lend(FIVarSet* set) {
        owner_.SetVarSet(set);
        Take(set);
    }
    // A further loan of what was lent to the same owner.
    void Share(const LentVarSet& other) { Take(other.Get()); }

 private:
    const void* Borrower() const override { return &owner_; }
    void OnGone(FIVarSet& set) override { TakeBack(set); }
    void TakeBack(const FIVarSet& set) {
        if (owner_.GetVarSet() == &set) owner_.SetVarSet(nullptr);
    }

    Owner& owner_;
};

}  // namespace fixtop
