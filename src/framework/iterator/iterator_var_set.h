// SPDX-License-Identifier: Apache-2.0
#pragma once

// IteratorVarSet: what an iterator shows to the entries that it reads: its display units, its
// variables and its path. A unit belongs to a quantity or, with a NULL or empty quantity, to the
// node's own.

#include <memory>

#include "diagnostics/instance_counts.h"
#include "fixtop/var_set.h"
#include "framework/iterator/var_map.h"

namespace fixtop {

class FIIterator;

class IteratorVarSet final : public FIVarSet, private Counted<CountedClass::FIVarSet> {
 public:
    IteratorVarSet() = default;
    IteratorVarSet(const IteratorVarSet&) = delete;
    IteratorVarSet& operator=(const IteratorVarSet&) = delete;

    void SetUnit(const FIValue& quantity, const FIValue& unit, FIValue& old) override;
    void GetUnit(const FIValue& quantity, FIValue& out) override;
    void SetSpecUnit(const FIValue& quantity, const FIValue& unit, FIValue& old) override;
    void GetSpecUnit(const FIValue& quantity, FIValue& out) override;
    void GetPath(FIValue& out) override;
    // A variable of the set itself, which stays when the iterator moves.
    void SetVar(const FIValue& name, const FIValue& value) override;
    // The set's own variables, then those of the iterator's position.
    bool GetVar(const FIValue& name, FIValue& out) override;

    // Units and variables of another set.
    void CopyFrom(const IteratorVarSet& other);
    // Whether anything was ever set.
    bool HasOwn() const { return kept_ != nullptr; }
    // Whether a unit was ever set; from ForgetUnits on none is.
    bool HasUnits() const {
        return kept_ && (!kept_->units.IsEmpty() || !kept_->spec_units.IsEmpty());
    }
    // Whether each unit of another set stands in this one for the same quantity.
    bool HasUnitsOf(const IteratorVarSet& other) const;
    void ForgetUnits();

 private:
    struct Units {
        FIValue own;
        VarMap of_quantity;

        void Set(const FIValue& quantity, const FIValue& unit, FIValue& old);
        void Get(const FIValue& quantity, FIValue& out) const;
        bool Contains(const Units& other) const;
        bool IsEmpty() const { return own.IsNull() && of_quantity.Variables().empty(); }
    };

    // Most iterators are asked for what nobody set, so that it is made when it is first set.
    struct Kept {
        Units units;
        Units spec_units;
        VarMap variables;
    };

    Kept& TheKept() {
        if (!kept_) kept_ = std::make_unique<Kept>();
        return *kept_;
    }
    void KeepUnit(Units Kept::*units, const FIValue& quantity, const FIValue& unit, FIValue& old);
    void ReadUnit(Units Kept::*units, const FIValue& quantity, FIValue& out) const;

    FIIterator& Iterator();

    std::unique_ptr<Kept> kept_;
};

// The base of an iterator that has its set, which finds the iterator by that.
struct HasVarSet {
    IteratorVarSet var_set_;
};

}  // namespace fixtop
