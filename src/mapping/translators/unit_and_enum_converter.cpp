// SPDX-License-Identifier: Apache-2.0
#include "mapping/translators/unit_and_enum_converter.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <utility>

#include "diagnostics/module_log.h"
#include "xml/message_text.h"

namespace fixtop {

namespace {

bool IsEnumeration(const CCDMAttribute& attribute) {
    return attribute.type == CCDMAttrType::kEnumeration;
}

const CCDMEnumMap* TableFor(const EnumMaps& tables, const std::string& translate_name) {
    const auto found = tables.find(translate_name);
    return found == tables.end() ? nullptr : found->second.get();
}

bool IsNone(const FIValue& unit) {
    return unit.IsNull() || unit.Length() == 0;
}

// Whether it is a number or the text of one.
bool ReadNumber(const FIValue& value, double& number) {
    if (value.IsNumber()) {
        number = value.AsDouble();
        return true;
    }
    const char* text = value.CStr();
    char* end = nullptr;
    number = std::strtod(text, &end);
    return end != text && *end == '\0';
}

}  // namespace

// A table of the attribute's own goes before the enumeration's.
const CCDMEnumMap* UnitAndEnumConverter::OptionTable(const CCDMEnumeration* enumeration) const {
    const std::string& name = library_.translateName;
    if (const CCDMEnumMap* own = TableFor(attribute_.enumMaps, name)) return own;
    return enumeration ? TableFor(enumeration->enumMaps, name) : nullptr;
}

void UnitAndEnumConverter::ToNeutralOption(FIValue& value) const {
    const CCDMEnumeration* enumeration = library_.FindEnumeration(attribute_.typeName);
    std::string option = value.ToText();
    if (const CCDMEnumMap* table = OptionTable(enumeration)) {
        if (const std::string* neutral = table->NeutralName(option)) option = *neutral;
    }
    value.SetText(option);
    if (!enumeration || !enumeration->isClosed || enumeration->options.contains(option)) return;
    LogMessage(MessageText("Enum value: %s does not appear in Enum: %s", option.c_str(),
                           enumeration->name.c_str())
                   .c_str());
}

void UnitAndEnumConverter::ToApplicationOption(FIValue& value) const {
    const CCDMEnumMap* table = OptionTable(library_.FindEnumeration(attribute_.typeName));
    const std::string* name = table ? table->ApplicationName(value.ToText()) : nullptr;
    if (name) value.SetText(*name);
}

int UnitAndEnumConverter::DisplayUnit(FIVarSet* vars, bool is_spec) const {
    if (!vars || attribute_.quantity < 1) return 0;
    FIValue unit;
    if (is_spec) {
        vars->GetSpecUnit(Quantity(), unit);
    } else {
        vars->GetUnit(Quantity(), unit);
    }
    const int number = unit.Kind() == FIValue::kInt ? unit.AsInt() : 0;
    return library_.units.HasUnit(attribute_.quantity, number) ? number : 0;
}

// No unit at all is one by the unit file alone: it is not looked up among those of the quantity.
int UnitAndEnumConverter::Find(const FIValue& unit, FIValue& name) {
    CCDMUnitsList& units = library_.units;
    if (IsNone(unit) && !units.HasTranslation("", Quantity())) return 0;
    if (!units.ToCcdmUnit(IsNone(unit) ? FIValue("") : unit, Quantity(), name)) return 0;
    return std::max(0, units.Source()->UnitId(name.ToText().c_str(), attribute_.quantity));
}

void UnitAndEnumConverter::Convert(FIValue& value, int from, int to) const {
    double number = 0;
    if (from == to || !ReadNumber(value, number)) return;
    value.SetReal(library_.units.Convert(number, FIValue::OfInt(from), FIValue::OfInt(to)));
}

void UnitAndEnumConverter::FromApplication(const FIValue& unit, FIValue& value) {
    if (IsEnumeration(attribute_)) return ToNeutralOption(value);
    if (!HasDisplayUnit() || !value.IsNumber()) return;
    FIValue name;
    if (const int application = Find(unit, name); application > 0) {
        Convert(value, application, display_);
    }
}

std::string UnitAndEnumConverter::WhyRefused(const FIValue& unit, const FIValue& value) {
    if (IsEnumeration(attribute_)) {
        const CCDMEnumeration* enumeration = library_.FindEnumeration(attribute_.typeName);
        const std::string option = value.ToText();
        const bool is_wrong =
            enumeration && enumeration->isClosed && !enumeration->options.contains(option);
        return is_wrong ? "option " + option + " is none of " + enumeration->name : "";
    }
    FIValue name;
    const bool has_unit = attribute_.quantity > 0 && value.IsNumber() && !IsNone(unit);
    if (!has_unit || !library_.units.Source() || Find(unit, name) > 0) return "";
    return "unit " + unit.ToText() + " is none of quantity " +
           library_.units.Source()->QuantityName(attribute_.quantity);
}

bool UnitAndEnumConverter::ToApplication(const FIValue& unit, FIValue& value, FIValue& out) {
    if (value.IsNull()) return true;
    if (IsEnumeration(attribute_)) {
        ToApplicationOption(value);
        return true;
    }
    double number = 0;
    if (!HasDisplayUnit() || !ReadNumber(value, number)) return true;
    FIValue name;
    if (const int application = Find(unit, name); application > 0) {
        Convert(value, display_, application);
        return true;
    }
    const std::string shown = library_.units.Source()->UnitName(display_);
    out.SetText(IsNone(unit)
                    ? "No conversion from unit " + shown + ", the application tells no unit"
                    : "No conversion from unit " + shown + " to unit " + unit.ToText() +
                          " of the application");
    return false;
}

void UnitAndEnumConverter::NameUnit(const FIValue& value, FIValue& unit) {
    const bool in_display_unit = HasDisplayUnit() && !value.IsText();
    if (!in_display_unit && IsNone(unit)) return;
    FIValue name;
    const int application = Find(unit, name);
    if (in_display_unit && application > 0) {
        unit.SetText(library_.units.Source()->UnitName(display_));
    } else if (!IsNone(unit) && (application > 0 || !library_.units.Initialized())) {
        unit = std::move(name);
    }
}

void UnitAndEnumConverter::NameUnits(FIValue& units) {
    if (units.IsNull()) return;
    std::istringstream lines(units.ToText());
    // Else the list would end where memory does.
    lines.exceptions(std::ios::badbit);
    units.SetText("");
    FIValue neutral;
    const char* separator = "";
    for (std::string line; std::getline(lines, line); separator = "\n") {
        library_.units.ToCcdmUnit(FIValue(line.c_str()), Quantity(), neutral);
        units.AppendText(separator);
        units.AppendValue(neutral);
    }
}

bool UnitAndEnumConverter::ToApplicationUnit(const FIValue& unit, FIValue& out) const {
    return library_.units.ToAppUnit(unit, Quantity(), out);
}

}  // namespace fixtop
