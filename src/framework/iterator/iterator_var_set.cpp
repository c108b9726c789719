// SPDX-License-Identifier: Apache-2.0
#include "framework/iterator/iterator_var_set.h"

#include <algorithm>

#include "diagnostics/memory_guard.h"
#include "framework/iterator/iterator.h"

namespace fixtop {

namespace {

bool IsOwn(const FIValue& quantity) {
    return quantity.IsNull() || quantity.Length() == 0;
}

}  // namespace

FIIterator& IteratorVarSet::Iterator() {
    return static_cast<FIIterator&>(*reinterpret_cast<HasVarSet*>(this));
}

void IteratorVarSet::Units::Set(const FIValue& quantity, const FIValue& unit, FIValue& old) {
    FIValue before;
    Get(quantity, before);
    if (IsOwn(quantity)) {
        own = unit;
    } else {
        of_quantity.Set(quantity, unit);
    }
    old = std::move(before);
}

void IteratorVarSet::Units::Get(const FIValue& quantity, FIValue& out) const {
    if (IsOwn(quantity)) {
        out = own;
    } else if (const FIValue* unit = of_quantity.Find(quantity)) {
        out = *unit;
    } else {
        out.Clear();
    }
}

bool IteratorVarSet::Units::Contains(const Units& other) const {
    if (!other.own.IsNull() && own.Compare(other.own) != 0) return false;
    const auto stands_here = [&](const VarMap::Variable& each) {
        const FIValue* unit = of_quantity.Find(each.name);
        return unit && unit->Compare(each.value) == 0;
    };
    return std::ranges::all_of(other.of_quantity.Variables(), stands_here);
}

void IteratorVarSet::KeepUnit(Units Kept::*units, const FIValue& quantity, const FIValue& unit,
                              FIValue& old) {
    (TheKept().*units).Set(quantity, unit, old);
}

void IteratorVarSet::ReadUnit(Units Kept::*units, const FIValue& quantity, FIValue& out) const {
    if (!kept_) return out.Clear();
    ((*kept_).*units).Get(quantity, out);
}

void IteratorVarSet::SetUnit(const FIValue& quantity, const FIValue& unit, FIValue& old) {
    if (memory::IsInside()) return KeepUnit(&Kept::units, quantity, unit, old);
    memory::Call<&FIVarSet::SetUnit>::OrTell(old, *this, quantity, unit, old);
}
void IteratorVarSet::GetUnit(const FIValue& quantity, FIValue& out) {
    if (memory::IsInside()) return ReadUnit(&Kept::units, quantity, out);
    memory::Call<&FIVarSet::GetUnit>::OrTell(out, *this, quantity, out);
}
void IteratorVarSet::SetSpecUnit(const FIValue& quantity, const FIValue& unit, FIValue& old) {
    if (memory::IsInside()) return KeepUnit(&Kept::spec_units, quantity, unit, old);
    memory::Call<&FIVarSet::SetSpecUnit>::OrTell(old, *this, quantity, unit, old);
}
void IteratorVarSet::GetSpecUnit(const FIValue& quantity, FIValue& out) {
    if (memory::IsInside()) return ReadUnit(&Kept::spec_units, quantity, out);
    memory::Call<&FIVarSet::GetSpecUnit>::OrTell(out, *this, quantity, out);
}

void IteratorVarSet::GetPath(FIValue& out) {
    Iterator().GetPath(out);
}

void IteratorVarSet::SetVar(const FIValue& name, const FIValue& value) {
    memory::OrNothing([&] { TheKept().variables.Set(name, value); });
}

bool IteratorVarSet::GetVar(const FIValue& name, FIValue& out) {
    if (!memory::IsInside()) return memory::Call<&FIVarSet::GetVar>::OrTell(out, *this, name, out);
    const FIValue* value = kept_ ? kept_->variables.Find(name) : nullptr;
    if (!value) return Iterator().GetVar(name, out);
    out = *value;
    return true;
}

void IteratorVarSet::CopyFrom(const IteratorVarSet& other) {
    if (other.kept_) {
        TheKept() = *other.kept_;
    } else {
        kept_.reset();
    }
}

bool IteratorVarSet::HasUnitsOf(const IteratorVarSet& other) const {
    if (!kept_ || !other.kept_) return !other.HasUnits();
    return kept_->units.Contains(other.kept_->units) &&
           kept_->spec_units.Contains(other.kept_->spec_units);
}

void IteratorVarSet::ForgetUnits() {
    if (!kept_) return;
    kept_->units = Units();
    kept_->spec_units = Units();
}

}  // namespace fixtop
