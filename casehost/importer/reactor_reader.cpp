// SPDX-License-Identifier: Apache-2.0
#include <unordered_map>

#include "reactions.h"

namespace fixtop::casehost::importer {

namespace {

using namespace file_unit;
using enum VariableState;

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

// The same numbers, those of the set's reactions first, in its order and by their names.
LabelledNumbers InOrderOf(const std::vector<SetMember>& members, const LabelledNumbers& numbers) {
    std::unordered_map<std::string_view, std::size_t> places;
    for (std::size_t i = 0; i < numbers.labels.size(); ++i) places.emplace(numbers.labels[i], i);
    LabelledNumbers ordered;
    const auto take = [&](const std::string& label, std::string name) {
        const auto found = places.find(label);
        if (found == places.end()) return;
        ordered.labels.push_back(std::move(name));
        ordered.values.push_back(numbers.values[found->second]);
        places.erase(found);
    };
    for (const SetMember& member : members) take(member.id, member.Name());
    for (const std::string& label : numbers.labels) take(label, label);
    return ordered;
}

// One element for each active reaction, which are the first of both lists.
void WriteLocalReactions(const std::vector<SetMember>& members, const LabelledNumbers& extents,
                         ObjectSheet& sheet) {
    std::vector<Number> values;
    std::vector<std::string> bases;
    std::size_t told = 0;
    for (const SetMember& member : members) {
        if (!member.is_active) break;
        const bool has = told < extents.labels.size() && extents.labels[told] == member.Name();
        values.push_back(has ? extents.values[told++] : std::nullopt);
        bases.emplace_back(member.reaction.Child("BaseReactant").Text());
    }
    if (values.empty()) return;
    sheet.Array("Est. Molar Extent", mol_per_second, {Numbered(values.size())}, values);
    sheet.Texts("Base Component", Numbered(bases.size()), bases, specified);
}

void ReadLocalReactions(Reading& reading, XmlNode root, XmlNode node, ObjectSheet& sheet) {
    const std::string_view id = node.Child("ReactionSetID").Text();
    const XmlNode set = FindReactionSet(root, id);
    const std::vector<SetMember> members = MembersOf(reading, root, set);
    sheet.Text("Reaction Set", set ? set.Child("Name").Text() : id, specified);
    const LabelledNumbers conversions =
        InOrderOf(members, ReadLabelled(reading, node.Child("ReactionConversions"), "ID", nullptr));
    const LabelledNumbers extents =
        InOrderOf(members, ReadLabelled(reading, node.Child("ReactionExtents"), "ID", "Value"));
    WriteLabelled(sheet, "Reaction Conversion", none, conversions);
    WriteLabelled(sheet, "Reaction Extent", mol_per_second, extents);
    if (conversions.labels.empty() && extents.labels.empty()) return;
    WriteLocalReactions(members, extents, sheet);
}

}  // namespace

bool IsReactor(const FileObject& unit) {
    return ListHolds("Reactor_Conversion|Reactor_Equilibrium|Reactor_Gibbs", unit.word);
}

void ReadReactorLists(Reading& reading, XmlNode root, const FileObject& unit, ObjectData& object) {
    ObjectSheet sheet(reading, object);
    ReadLocalReactions(reading, root, unit.node, sheet);
    WriteLabelled(sheet, "Comp Conversion", none,
                  ReadLabelled(reading, unit.node.Child("CompoundConversions"), "ID", nullptr));
    if (unit.word != "Reactor_Gibbs") return;
    ReadElements(reading, unit.node, sheet);
    ReadElementMatrix(reading, unit.node, sheet);
}

}  // namespace fixtop::casehost::importer
