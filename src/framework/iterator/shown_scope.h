// SPDX-License-Identifier: Apache-2.0
#pragma once

// The calling convention of reads and writes: an entry sees the variables and units of whoever
// calls it, for the call alone. The entry is kept alive meanwhile, since a store may move the
// iterator from inside the host's callbacks. What the entry showed before it shows again, unless
// that set has gone meanwhile.

#include "fixtop/entry.h"
#include "fixtop/ref.h"
#include "framework/nodes/var_set_loan.h"

namespace fixtop {

class ShownScope {
 public:
    ShownScope(const Ref<FIEntry>& entry, FIVarSet* vars)
        : entry_(entry), saved_(entry_->GetVarSet()) {
        entry_->SetVarSet(vars);
    }
    ~ShownScope() { entry_->SetVarSet(saved_.Get()); }
    ShownScope(const ShownScope&) = delete;
    ShownScope& operator=(const ShownScope&) = delete;

    FIEntry* operator->() const { return entry_.Get(); }

 private:
    const Ref<FIEntry> entry_;
    VarSetLoan saved_;
};

}  // namespace fixtop
