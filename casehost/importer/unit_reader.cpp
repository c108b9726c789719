// SPDX-License-Identifier: Apache-2.0
#include "casehost/unit_op_names.h"
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

std::string NameOfReactionSet(XmlNode root, std::string_view id) {
    for (XmlNode set : Children(root.Child("ReactionSets"))) {
        if (set.Child("ID").Text() == id) return std::string(set.Child("Name").Text());
    }
    return std::string(id);
}

// `value_attribute` null: the number is the element's text.
LabelledNumbers ReadLabelled(Reading& reading, XmlNode list, const char* label_attribute,
                             const char* value_attribute) {
    LabelledNumbers result;
    for (XmlNode item : Children(list)) {
        const std::string_view value =
            value_attribute ? item.Attribute(value_attribute).value_or("") : item.Text();
        result.labels.emplace_back(item.Attribute(label_attribute).value_or(""));
        result.values.push_back(ParseNumber(reading, item, value));
    }
    return result;
}

void WriteLabelled(ObjectSheet& sheet, const char* name, FileUnit unit, LabelledNumbers numbers) {
    if (numbers.labels.empty()) return;
    sheet.Array(name, unit, {LabelledBy(std::move(numbers.labels))}, numbers.values);
}

std::string_view IdOf(XmlNode node) {
    return node.Attribute("ID").value_or("");
}

// The moles of atoms of each element that enter a Gibbs reactor.
void ReadElements(Reading& reading, XmlNode node, ObjectSheet& sheet) {
    LabelledNumbers atoms;
    atoms.labels = OfChildren<std::string>(node.Child("Elements"), IdOf);
    atoms.values = OfChildren<Number>(node.Child("TotalElements"), [&](XmlNode total) {
        return ParseNumber(reading, total, IdOf(total));
    });
    if (atoms.labels.size() != atoms.values.size()) {
        reading.problems.Error(node, "expected one total for each of " +
                                         std::to_string(atoms.labels.size()) + " elements, found " +
                                         std::to_string(atoms.values.size()));
        return;
    }
    WriteLabelled(sheet, "Element Molar Flow", mol_per_second, std::move(atoms));
}

// Rows are elements, parted by ':', columns compounds, parted by ','.
void ReadElementMatrix(Reading& reading, XmlNode node, ObjectSheet& sheet) {
    const XmlNode matrix = node.Child("ElementMatrix");
    if (matrix.Text().empty()) return;
    const auto elements = OfChildren<std::string>(node.Child("Elements"), IdOf);
    const auto compounds = OfChildren<std::string>(node.Child("ComponentIDs"), &XmlNode::Text);
    const std::vector<Number> values = ParseNumbers(reading, matrix, matrix.Text(), ",:");
    if (values.size() != elements.size() * compounds.size()) {
        reading.problems.Error(matrix, "expected " + std::to_string(elements.size()) + " times " +
                                           std::to_string(compounds.size()) + " numbers, found " +
                                           std::to_string(values.size()));
        return;
    }
    sheet.Array("Element Matrix", none, {LabelledBy(elements), LabelledBy(compounds)}, values);
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

void ReadReactorLists(Reading& reading, XmlNode root, const FileObject& unit, ObjectData& object) {
    ObjectSheet sheet(reading, object);
    const XmlNode node = unit.node;
    sheet.Text("Reaction Set", NameOfReactionSet(root, node.Child("ReactionSetID").Text()),
               specified);
    WriteLabelled(sheet, "Comp Conversion", none,
                  ReadLabelled(reading, node.Child("CompoundConversions"), "ID", nullptr));
    WriteLabelled(sheet, "Reaction Conversion", none,
                  ReadLabelled(reading, node.Child("ReactionConversions"), "ID", nullptr));
    WriteLabelled(sheet, "Reaction Extent", mol_per_second,
                  ReadLabelled(reading, node.Child("ReactionExtents"), "ID", "Value"));
    if (unit.word != "Reactor_Gibbs") return;
    ReadElements(reading, node, sheet);
    ReadElementMatrix(reading, node, sheet);
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
    if (ListHolds("Reactor_Conversion|Reactor_Equilibrium|Reactor_Gibbs", unit.word)) {
        ReadReactorLists(reading, root, unit, object);
    } else if (unit.word == "DistillationColumn") {
        ReadColumnLists(reading, file, unit, object);
    } else if (unit.word == "Recycle") {
        ReadRecycleLists(reading, unit, object);
    } else if (unit.word == "Compressor") {
        sheet.Text(names::kIsCompressor, "YES");
    }
}

}  // namespace fixtop::casehost::importer
