// SPDX-License-Identifier: Apache-2.0
#pragma once

// FIVarSet: the display units and variables of whoever is reading an entry. It belongs to that
// reader; who keeps it for longer than a call does so in a VarSetLoan.

#include "fixtop/value.h"

namespace fixtop {
class VarSetLoan;
}

namespace fixtop::inline FI {

class FIVarSet {
 public:
    FIVarSet() = default;
    FIVarSet(const FIVarSet&) = delete;
    FIVarSet& operator=(const FIVarSet&) = delete;
    virtual ~FIVarSet() {
        if (loans_) EndLoans();
    }
    // Unit in which a quantity is to be shown; a NULL or empty quantity means the node's own. `old`
    // receives the unit that stood before, NULL when there was none.
    virtual void SetUnit(const FIValue& quantity, const FIValue& unit, FIValue& old) = 0;
    virtual void GetUnit(const FIValue& quantity, FIValue& out) = 0;
    // The same for the specification face.
    virtual void SetSpecUnit(const FIValue& quantity, const FIValue& unit, FIValue& old) = 0;
    virtual void GetSpecUnit(const FIValue& quantity, FIValue& out) = 0;
    // Path of the present node, NULL when the set belongs to no position.
    virtual void GetPath(FIValue& out) = 0;
    virtual void SetVar(const FIValue& name, const FIValue& value) = 0;
    // False and NULL when the variable does not exist.
    virtual bool GetVar(const FIValue& name, FIValue& out) = 0;

 private:
    friend VarSetLoan;

    void EndLoans();

    VarSetLoan* loans_ = nullptr;
};

}  // namespace fixtop::inline FI
