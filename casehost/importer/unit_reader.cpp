// SPDX-License-Identifier: Apache-2.0
#include "casehost/unit_op_names.h"
#include "column_parts.h"
#include "reactions.h"
#include "readers.h"
#include "unit_rows.h"

namespace fixtop::casehost::importer {

namespace {

using namespace file_unit;
using enum VariableState;

// Presentation and bookkeeping that every object carries.
constexpr std::string_view kCommonElements =
    "Left|Top|Right|Bottom|Width|Height|code|ProductVersion|LastUpdated";

void ReadUnknownUnit(Reading& reading, const FileObject& unit, ObjectData& object) {
    ObjectSheet sheet(reading, object);
    for (XmlNode child : Children(unit.node)) {
        if (child.FirstChild() || !IsNumber(child.Text())) continue;
        if (ListHolds(kCommonElements, child.Tag())) continue;
        sheet.Real(std::string(child.Tag()), none, ReadNumber(reading, child));
    }
    reading.problems.Remark(unit.node, "unit operation '" + unit.tag + "' has the unknown class '" +
                                           unit.word + "'; its numbers are kept without units");
}

// One quantity that a recycle compares between its two streams.
struct RecycleRow {
    const char* key;
    const char* tolerance_element;
    const char* name;
    FileUnit value_unit;
    FileUnit difference_unit;
};

constexpr RecycleRow kRecycleRows[] = {
    {"Temperature", "Temperatura", "Temperature", kelvin, kelvin_difference},
    {"Pressure", "Pressao", "Pressure", pascal, pascal_difference},
    {"MassFlow", "VazaoMassica", "Mass Flow", kg_per_second, kg_per_second},
    {"Enthalpy", "Entalpia", "Mass Enthalpy", kj_per_kg, kj_per_kg},
};

const UnitClass kOtherTolerances = {"",
                                    "",
                                    {{"FracaoVapor", "Vapour Fraction Tolerance", none, "*"},
                                     {"Entropia", "Mass Entropy Tolerance", kj_per_kg_kelvin, "*"},
                                     {"Composicao", "Composition Tolerance", none, "*"}}};

Number ItemOf(Reading& reading, XmlNode list, std::string_view key) {
    for (XmlNode item : Children(list)) {
        if (item.Attribute("Key") == key) {
            return ParseNumber(reading, item, item.Attribute("Value").value_or(""));
        }
    }
    return std::nullopt;
}

void ReadRecycleLists(Reading& reading, const FileObject& unit, ObjectData& object) {
    ObjectSheet sheet(reading, object);
    const XmlNode tolerances = unit.node.Child("ConvergenceParameters");
    for (const RecycleRow& row : kRecycleRows) {
        sheet.Real(row.name, row.value_unit, ItemOf(reading, unit.node.Child("Values"), row.key));
        sheet.Real(row.name + std::string(" Error"), row.difference_unit,
                   ItemOf(reading, unit.node.Child("Errors"), row.key));
        sheet.Real(row.name + std::string(" Tolerance"), row.difference_unit,
                   ReadNumber(reading, tolerances.Child(row.tolerance_element)), specified);
    }
    ReadRows(reading, kOtherTolerances, tolerances, sheet);
}

// The product of what the file tells of an exchanger.
void WriteConductance(const ObjectData& exchanger, ObjectSheet& sheet) {
    const Number coefficient = ValueOf(exchanger, "Overall Heat Transfer Coefficient");
    const Number area = ValueOf(exchanger, "Area");
    if (coefficient && area) sheet.Real(names::kUA, internal_unit::ua, *coefficient * *area);
}

// The states between the zones of a heater, of which the file tells the last one alone.
void WriteZones(const ObjectData& heater, ObjectSheet& sheet) {
    const Number outlet = ValueOf(heater, "Product Vapour Fraction");
    if (outlet) sheet.Numbers("Zone vapour frac", none, {outlet});
}

}  // namespace

void ReadUnit(Reading& reading, const FlowsheetFile& file, XmlNode root, const FileObject& unit,
              ObjectData& object) {
    const UnitClass* known = FindUnitClass(unit.word);
    if (!known) {
        object.type = unit.word;
        return ReadUnknownUnit(reading, unit, object);
    }
    object.type = known->type;
    ObjectSheet sheet(reading, object);
    ReadRows(reading, *known, unit.node, sheet);
    if (IsReactor(unit)) {
        ReadReactorLists(reading, root, unit, object);
    } else if (unit.word == "DistillationColumn") {
        ReadColumnLists(reading, file, unit, object);
    } else if (unit.word == "Recycle") {
        ReadRecycleLists(reading, unit, object);
    } else if (unit.word == "Compressor") {
        sheet.Text(names::kIsCompressor, "YES");
    } else if (unit.word == "Heater" || unit.word == "Cooler") {
        WriteZones(object, sheet);
    } else if (unit.word == "HeatExchanger") {
        WriteConductance(object, sheet);
    }
}

}  // namespace fixtop::casehost::importer
