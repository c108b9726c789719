// SPDX-License-Identifier: Apache-2.0
// CCDMClassEntry: writing, and the units in which values are shown.

#include <cstring>

#include "mapping/nodes/class_entry.h"
#include "mapping/translators/unit_and_enum_converter.h"

namespace fixtop {

namespace {

const FIValue kValue("value");
const FIValue kUom("uom");
const FIValue kSpecUom("spec_uom");
const FIValue kSpecValue("spec_value");

constexpr char kPure[] = "Not Supported for pure CCDM class";
constexpr char kNoDefaultNode[] = "No application node on default branch, can't map CCDM entry";
constexpr char kNoNode[] = "No current application node";
constexpr char kNoDisplay[] = "No display information implemented";
constexpr char kNoQuantity[] = "Uanable to find quantity";
constexpr char kNoUnit[] = "Unable to find unit";

bool Is(const FIValue& name, const char* text) {
    return name.IsText() && std::strcmp(name.CStr(), text) == 0;
}

bool IsNone(const FIValue& value) {
    return value.IsNull() || value.Length() == 0;
}

}  // namespace

// From the unit in which the value is read. What is stored into a node that is gone is refused by
// it.
bool CCDMClassEntry::Reverse(const Source& source, FIValue& value, FIValue& out) {
    FIReference& node = *source.face->Node();
    const bool is_spec = source.shown == Shown::kSpecification;
    const Shown shown = ShownAs(is_spec ? kSpecValue : kValue);
    UnitAndEnumConverter values(Library(), attribute_, GetVarSet(), shown == Shown::kSpecification);
    FIValue unit;
    if (values.HasDisplayUnit()) {
        const FIValue& unit_name = is_spec ? kSpecUom : kUom;
        if (const AppFace* face = OverridingFace(unit_name)) {
            ReadOverride(*face, unit_name, unit);
        } else {
            node.GetAttribute(UnitNameOf(source), unit);
        }
        if (node.IsGone()) return true;
    }
    return values.ToApplication(unit, value, out);
}

// A face that stands alone is told of its specification by that name.
CCDMClassEntry::Source CCDMClassEntry::TargetOf(const FIValue& name) const {
    if (faces_.secondary.Node()) return SourceOf(name);
    return {&faces_.primary, name, Is(name, "spec_value") ? Shown::kSpecification : Shown::kValue};
}

void CCDMClassEntry::SetAttribute(const FIValue& name, const FIValue& value, int mode,
                                  FIValue& out) {
    const Row* row = name.IsText() ? FindRow(name.CStr()) : nullptr;
    if (row && row->write) return (this->*row->write)(value, out);
    if (faces_.IsEmpty()) return out.SetText(kPure);
    const Source source = TargetOf(name);
    if (!source.face->Node()) return out.SetText(kNoDefaultNode);
    const bool is_value = row && row->crossing == Crossing::kValue;
    FIValue reversed = value;
    if (is_value && !Reverse(source, reversed, out)) return;
    source.face->Node()->SetAttribute(source.name, reversed, mode, out);
}

// ---- units of the application's nodes ----

void CCDMClassEntry::WriteUnit(const AppFace& face, const FIValue& unit, FIValue& out) {
    if (!face.Node()) return out.SetText(kNoNode);
    FIValue application_unit;
    UnitAndEnumConverter values(Library(), attribute_, GetVarSet(), false);
    if (!values.ToApplicationUnit(unit, application_unit)) {
        out = application_unit;
        return;
    }
    face.Node()->SetAttribute(kUom, application_unit, 0, out);
}

void CCDMClassEntry::SetUnit(const FIValue& unit, FIValue& out) {
    WriteUnit(ValueFace(), unit, out);
}

void CCDMClassEntry::SetSpecUnit(const FIValue& unit, FIValue& out) {
    WriteUnit(SpecFace(), unit, out);
}

// ---- values ----

void CCDMClassEntry::SetValue(const FIValue& value, int mode, FIValue& out) {
    const Source source = SourceOf(kValue);
    if (!source.face->Node()) return out.SetText(kNoNode);
    FIValue reversed = value;
    if (Reverse(source, reversed, out)) source.face->Node()->SetValue(reversed, mode, out);
}

// The face of the specification is the value of a node of its own, or else a part of the one node.
void CCDMClassEntry::SetSpecValue(const FIValue& value, int mode, FIValue& out) {
    const Source source = SourceOf(kSpecValue);
    if (!source.face->Node()) return out.SetText(kNoNode);
    FIValue reversed = value;
    if (!Reverse(source, reversed, out)) return;
    if (faces_.IsSplit()) {
        source.face->Node()->SetValue(reversed, mode, out);
    } else {
        source.face->Node()->SetSpecValue(reversed, mode, out);
    }
}

void CCDMClassEntry::SetValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                                    FIValue& out) {
    WriteInUnit(ValueFace(), Shown::kValue, value, unit, mode, out);
}

void CCDMClassEntry::SetSpecValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                                        FIValue& out) {
    WriteInUnit(SpecFace(), Shown::kSpecification, value, unit, mode, out);
}

// Only names are translated: the number is in the unit given, whatever is displayed.
void CCDMClassEntry::WriteInUnit(const AppFace& face, Shown shown, const FIValue& value,
                                 const FIValue& unit, int mode, FIValue& out) {
    if (!face.Node()) return out.SetText(kNoNode);
    const bool is_specification = shown == Shown::kSpecification;
    FIValue application_unit;
    UnitAndEnumConverter values(Library(), attribute_, nullptr, is_specification);
    if (!values.ToApplicationUnit(unit, application_unit)) {
        out = application_unit;
        return;
    }
    FIValue reversed = value;
    values.ToApplication(application_unit, reversed, out);
    if (is_specification && !faces_.IsSplit()) {
        face.Node()->SetSpecValueInUnit(reversed, application_unit, mode, out);
    } else {
        face.Node()->SetValueInUnit(reversed, application_unit, mode, out);
    }
}

// ---- display units ----

bool CCDMClassEntry::FindDisplayUnit(const FIValue& unit, const FIValue& quantity,
                                     FIValue& unit_number, FIValue& quantity_number, FIValue& out) {
    if (!GetVarSet()) {
        out.SetText(kNoDisplay);
        return false;
    }
    CCDMUnitSource* source = Library().units.Source();
    int number = quantity.IsNull() ? attribute_.quantity : 0;
    if (quantity.IsNumber()) number = quantity.AsInt();
    if (quantity.IsText() && source) number = source->QuantityId(quantity.CStr());
    if (number < 1 || !source) {
        out.SetText(kNoQuantity);
        return false;
    }
    int found = 0;
    if (unit.IsNumber() && Library().units.HasUnit(number, unit.AsInt())) found = unit.AsInt();
    if (!IsNone(unit) && unit.IsText()) found = source->UnitId(unit.CStr(), number);
    if (found < 1 && !IsNone(unit)) {
        out.SetText(kNoUnit);
        return false;
    }
    quantity_number.SetInt(number);
    unit_number.SetInt(found);
    out.Clear();
    return true;
}

void CCDMClassEntry::SetDisplayUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) {
    FIValue unit_number;
    FIValue quantity_number;
    FIValue old;
    if (!FindDisplayUnit(unit, quantity, unit_number, quantity_number, out)) return;
    GetVarSet()->SetUnit(quantity_number, unit_number, old);
}

void CCDMClassEntry::WriteDisplayUnit(const FIValue& unit, FIValue& out) {
    SetDisplayUnit(unit, FIValue(), out);
}

void CCDMClassEntry::WriteDisplaySpecUnit(const FIValue& unit, FIValue& out) {
    SetDisplaySpecUnit(unit, FIValue(), out);
}

void CCDMClassEntry::SetDisplaySpecUnit(const FIValue& unit, const FIValue& quantity,
                                        FIValue& out) {
    FIValue unit_number;
    FIValue quantity_number;
    FIValue old;
    if (!FindDisplayUnit(unit, quantity, unit_number, quantity_number, out)) return;
    GetVarSet()->SetSpecUnit(quantity_number, unit_number, old);
}

}  // namespace fixtop
