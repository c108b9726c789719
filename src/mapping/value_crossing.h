#pragma once

// How a value crosses between the application and the model: option names through the tables of the
// map, numbers between the units that both sides use, units by their names on either side.
//
// A failure leaves its text where the unit's name would stand: "Units not initiliazed" or
// "Unit not found".

#include "framework/reference.h"
#include "framework/var_set.h"
#include "model/class_library.h"

class ValueCrossing {
 public:
    // `vars` has the display units and may be null; `is_spec`: those of the specification face.
    ValueCrossing(CCDMClassLibrary& library, const CCDMAttribute& attribute, FIVarSet* vars,
                  bool is_spec)
        : library_(library), attribute_(attribute), vars_(vars), is_spec_(is_spec) {}

    // `unit_name` is the attribute of the node in which the application tells the value's unit. It
    // is read when there is a display unit alone.
    void FromApplication(FIReferenceBase& node, const FIValue& unit_name, FIValue& value);
    void ToApplication(FIReferenceBase& node, const FIValue& unit_name, FIValue& value);

    // The application's unit becomes the display unit, or is called by the model's name.
    void NameUnit(FIValue& unit);
    // The same names for a list of units, one a line.
    void NameUnits(FIValue& units);
    // False, and the reason in `out`, when the application has no such unit.
    bool ToApplicationUnit(const FIValue& unit, FIValue& out) const;

 private:
    const CCDMEnumMap* OptionTable(const CCDMEnumeration* enumeration) const;
    void ToNeutralOption(FIValue& value) const;
    void ToApplicationOption(FIValue& value) const;
    // 0 when none is set.
    int DisplayUnit() const;
    // 0 when it is not known.
    int ApplicationUnit(FIReferenceBase& node, const FIValue& unit_name);
    void Convert(FIValue& value, int from, int to) const;
    FIValue Quantity() const { return FIValue::OfInt(attribute_.quantity); }

    CCDMClassLibrary& library_;
    const CCDMAttribute& attribute_;
    FIVarSet* vars_;
    bool is_spec_;
};
