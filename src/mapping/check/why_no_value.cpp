// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/why_no_value.h"

#include "framework/nodes/shield.h"
#include "mapping/nodes/class_entry.h"
#include "mapping/translators/unit_and_enum_converter.h"

namespace fixtop {

namespace {

const FIValue kValue("value");
const FIValue kUom("uom");
const FIValue kStatus("status");

Absence JudgeList(CCDMClassContext& place, const CCDMAttribute& attribute, std::string& reason) {
    const auto cursor = Ref<FICursorBase>::Adopt(place.MakeCursor(kChildCursor));
    bool has_element = false;
    for (bool on = cursor->SeekName(kFromFirst, attribute.name.c_str()); on;
         on = cursor->Seek(kFromPresent, 1)) {
        FIValue name;
        FIValue value;
        const auto entry = Ref<FIEntry>::Adopt(cursor->GetEntry());
        entry->GetName(name);
        if (name.ToText() != attribute.name) break;
        has_element = true;
        if (attribute.type == CCDMAttrType::kObject) return Absence::kHasValue;
        entry->GetAttribute(kValue, value);
        if (!value.IsNull()) return Absence::kHasValue;
    }
    reason = has_element ? "no element of the list has a value"
                         : "the list is empty, or no element of it has a key";
    return Absence::kNoValue;
}

Absence JudgeValue(CCDMClassContext& place, const CCDMAttribute& attribute, std::string& reason) {
    const FacesChoice choice =
        ChooseTranslators(place.QueryFor(attribute, place.PathOf(attribute)));
    const auto entry =
        Ref<CCDMClassEntry>::Share(new Shielded<CCDMClassEntry>(place, attribute, choice));
    FIValue value;
    entry->GetAttribute(kValue, value);
    if (value.IsNull()) {
        entry->GetAttribute(kStatus, value);
        const std::string status = value.ToText();
        reason = "the node has no value" + (status.empty() ? "" : " (" + status + ")");
        return Absence::kNoValue;
    }
    FIValue unit;
    if (FIReference* node = entry->Faces().First().Node()) node->GetAttribute(kUom, unit);
    UnitAndEnumConverter converter(place.Library(), attribute, nullptr, false);
    reason = converter.WhyRefused(unit, value);
    return reason.empty() ? Absence::kHasValue : Absence::kRefused;
}

}  // namespace

Absence WhyNoValue(CCDMClassContext& place, const CCDMAttribute& attribute, std::string& reason) {
    if (attribute.isArray) return JudgeList(place, attribute, reason);
    if (attribute.type == CCDMAttrType::kObject) return Absence::kHasValue;
    return JudgeValue(place, attribute, reason);
}

}  // namespace fixtop
