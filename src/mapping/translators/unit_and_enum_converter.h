// SPDX-License-Identifier: Apache-2.0
#pragma once

// How a value crosses between the application and the model: option names through the tables of the
// map, numbers between the units that both sides use, units by their names on either side.
//
// A number is shown in the display unit when the application's unit is known to the quantity, and
// named so; else it stays as it is, under the application's name, and nothing is stored in the
// display unit. Without units the name is "Units not initiliazed". Application units that are asked
// for here are NULL where the application tells none; the unit file may know what that means.

#include "fixtop/var_set.h"
#include "model/class_library.h"

namespace fixtop {

class UnitAndEnumConverter {
 public:
    // `vars` has the display units and may be null; `is_spec`: those of the specification face.
    UnitAndEnumConverter(CCDMClassLibrary& library, const CCDMAttribute& attribute, FIVarSet* vars,
                         bool is_spec)
        : library_(library), attribute_(attribute), display_(DisplayUnit(vars, is_spec)) {}

    // Without one the application's unit of a value does not matter.
    bool HasDisplayUnit() const { return display_ > 0; }
    void FromApplication(const FIValue& unit, FIValue& value);
    // False, and the reason in `out`, for a number whose unit can't be converted.
    bool ToApplication(const FIValue& unit, FIValue& value, FIValue& out);

    // Why a value of the application, in this unit, has no place in the model: the unit is none of
    // the quantity, or the option none of a closed enumeration. Empty when it has one.
    std::string WhyRefused(const FIValue& unit, const FIValue& value);

    // The application's unit becomes the one in which the value, as the application has it, is
    // shown.
    void NameUnit(const FIValue& value, FIValue& unit);
    // The same names for a list of units, one a line.
    void NameUnits(FIValue& units);
    // False, and the reason in `out`, when the application has no such unit.
    bool ToApplicationUnit(const FIValue& unit, FIValue& out) const;

 private:
    const CCDMEnumMap* OptionTable(const CCDMEnumeration* enumeration) const;
    void ToNeutralOption(FIValue& value) const;
    void ToApplicationOption(FIValue& value) const;
    // 0 when none is set.
    int DisplayUnit(FIVarSet* vars, bool is_spec) const;
    // The number and the model's name of the application's unit; 0 when the quantity has no such
    // unit.
    int Find(const FIValue& unit, FIValue& name);
    void Convert(FIValue& value, int from, int to) const;
    FIValue Quantity() const { return FIValue::OfInt(attribute_.quantity); }

    CCDMClassLibrary& library_;
    const CCDMAttribute& attribute_;
    const int display_;
};

}  // namespace fixtop
