// SPDX-License-Identifier: Apache-2.0
#include "framework/nodes/var_set_loan.h"

namespace fixtop {

void FIVarSet::EndLoans() {
    while (loans_) {
        VarSetLoan& loan = *loans_;
        loan.Unlink();
        loan.OnGone(*this);
    }
}

bool VarSetLoan::IsShared(const void* borrower) const {
    for (const VarSetLoan* loan = set_ ? set_->loans_ : nullptr; loan; loan = loan->next_) {
        if (loan != this && loan->Borrower() == borrower) return true;
    }
    return false;
}

void VarSetLoan::Link(FIVarSet& set) {
    set_ = &set;
    next_ = set.loans_;
    link_ = &set.loans_;
    if (next_) next_->link_ = &next_;
    set.loans_ = this;
}

void VarSetLoan::Unlink() {
    *link_ = next_;
    if (next_) next_->link_ = link_;
    set_ = nullptr;
}

}  // namespace fixtop
