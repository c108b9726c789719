#include "mapping/value_crossing.h"

#include <cstdlib>
#include <sstream>

#include "diagnostics/error_log.h"
#include "model/message_text.h"

namespace {

bool IsEnumeration(const CCDMAttribute& attribute) {
    return attribute.type == CCDMAttrType::kEnumeration;
}

const CCDMEnumMap* TableFor(const EnumMaps& tables, const std::string& translate_name) {
    const auto found = tables.find(translate_name);
    return found == tables.end() ? nullptr : found->second.get();
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
const CCDMEnumMap* ValueCrossing::OptionTable(const CCDMEnumeration* enumeration) const {
    const std::string& name = library_.translateName;
    if (const CCDMEnumMap* own = TableFor(attribute_.enumMaps, name)) return own;
    return enumeration ? TableFor(enumeration->enumMaps, name) : nullptr;
}

void ValueCrossing::ToNeutralOption(FIValue& value) const {
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

void ValueCrossing::ToApplicationOption(FIValue& value) const {
    const CCDMEnumMap* table = OptionTable(library_.FindEnumeration(attribute_.typeName));
    const std::string* name = table ? table->ApplicationName(value.ToText()) : nullptr;
    if (name) value.SetText(*name);
}

int ValueCrossing::DisplayUnit() const {
    if (!vars_ || attribute_.quantity < 1) return 0;
    FIValue unit;
    if (is_spec_) {
        vars_->GetSpecUnit(Quantity(), unit);
    } else {
        vars_->GetUnit(Quantity(), unit);
    }
    return unit.Kind() == FIValue::kInt ? unit.AsInt() : 0;
}

int ValueCrossing::ApplicationUnit(FIReferenceBase& node, const FIValue& unit_name) {
    FIValue unit;
    node.GetAttribute(unit_name, unit);
    FIValue neutral;
    if (unit.IsNull() || !library_.units.ToCcdmUnit(unit, Quantity(), neutral)) return 0;
    return library_.units.Source()->UnitId(neutral.ToText().c_str(), attribute_.quantity);
}

void ValueCrossing::Convert(FIValue& value, int from, int to) const {
    double number = 0;
    if (from < 1 || to < 1 || from == to || !ReadNumber(value, number)) return;
    value.SetReal(library_.units.Convert(number, FIValue::OfInt(from), FIValue::OfInt(to)));
}

void ValueCrossing::FromApplication(FIReferenceBase& node, const FIValue& unit_name,
                                    FIValue& value) {
    if (IsEnumeration(attribute_)) return ToNeutralOption(value);
    if (!value.IsNumber()) return;
    if (const int unit = DisplayUnit(); unit > 0) {
        Convert(value, ApplicationUnit(node, unit_name), unit);
    }
}

void ValueCrossing::ToApplication(FIReferenceBase& node, const FIValue& unit_name, FIValue& value) {
    if (value.IsNull()) return;
    if (IsEnumeration(attribute_)) return ToApplicationOption(value);
    if (const int unit = DisplayUnit(); unit > 0) {
        Convert(value, unit, ApplicationUnit(node, unit_name));
    }
}

void ValueCrossing::NameUnit(FIValue& unit) {
    if (unit.IsNull() || unit.Length() == 0) return;
    if (const int display = DisplayUnit(); display > 0 && library_.units.Source()) {
        unit.SetText(library_.units.Source()->UnitName(display));
        return;
    }
    const FIValue application_unit = unit;
    library_.units.ToCcdmUnit(application_unit, Quantity(), unit);
}

void ValueCrossing::NameUnits(FIValue& units) {
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

bool ValueCrossing::ToApplicationUnit(const FIValue& unit, FIValue& out) const {
    return library_.units.ToAppUnit(unit, Quantity(), out);
}
