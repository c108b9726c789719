// SPDX-License-Identifier: Apache-2.0
// Each reaction becomes an object of the case, and all of them with their sets the reaction package
// of the basis, in which the sets tell which reactions are active.

#include <algorithm>
#include <functional>

#include "casehost/unit_op_names.h"
#include "reactions.h"
#include "unit_rows.h"

namespace fixtop::casehost::importer {

namespace {

using namespace file_unit;

constexpr char kCatalyticReaction[] = "LHKineticRxnObject";

const std::vector<Choice> kReactionTypes = {{"Conversion", "ConversionRxnObject"},
                                            {"Equilibrium", "EquilibriumRxnObject"},
                                            {"Kinetic", "KineticRxnObject"},
                                            {"Heterogeneous_Catalytic", kCatalyticReaction}};

// A word that is not among the choices shows itself.
std::string_view Shown(const std::vector<Choice>& choices, std::string_view word) {
    const auto known = std::ranges::find(choices, word, &Choice::word);
    return known == choices.end() ? word : known->shown;
}

// Heats are for one mole of the base component: J/mol is kJ/kmol.
const UnitClass kReaction = {"",
                             "",
                             {{"ReactionHeat", "Reaction Heat", kj_per_kmol},
                              {"ReactionGibbsEnergy", "Reaction Gibbs Energy", kj_per_kmol},
                              {"Tmin", "Minimum Temperature", kelvin, "*"},
                              {"Tmax", "Maximum Temperature", kelvin, "*"}},
                             {{"ReactionType", "ReactionType", kReactionTypes}},
                             {{"Equation", "Equation"},
                              {"BaseReactant", "Base Component"},
                              {"ReactionPhase", "Reaction Phase"},
                              {"ReactionBasis", "Reaction Basis"},
                              {"KExprType", "Equilibrium Constant Source"},
                              {"Expression", "Expression"}}};

struct StoichiometryRow {
    const char* attribute;
    const char* name;
};
constexpr StoichiometryRow kStoichiometry[] = {
    {"StoichCoeff", "Stoichiometric Coefficient"},
    {"DirectOrder", "Forward Order"},
    {"ReverseOrder", "Reverse Order"},
};

void ReadStoichiometry(Reading& reading, XmlNode list, ObjectSheet& sheet) {
    std::vector<std::string> compounds;
    for (XmlNode compound : Children(list)) {
        compounds.emplace_back(compound.Attribute("Name").value_or(""));
        FindCompound(reading, compound, compounds.back());
    }
    for (const StoichiometryRow& row : kStoichiometry) {
        const auto values = OfChildren<Number>(list, [&](XmlNode compound) {
            const auto value = compound.Attribute(row.attribute);
            return value ? ParseNumber(reading, compound, *value) : std::nullopt;
        });
        sheet.Array(row.name, none, {LabelledBy(compounds)}, values, VariableState::specified);
    }
}

ObjectData ReadReaction(Reading& reading, XmlNode node) {
    ObjectData reaction;
    ObjectSheet sheet(reading, reaction);
    reaction.name = node.Child("Name").Text();
    reaction.type = Shown(kReactionTypes, node.Child("ReactionType").Text());
    if (reaction.name.empty()) {
        reading.problems.Error(node, "the reaction has no name; expected a Name with one");
    }
    ReadRows(reading, kReaction, node, sheet);
    ReadStoichiometry(reading, node.ChildWithElements("Compounds"), sheet);
    return reaction;
}

// ---- The package

using Elements = std::vector<BasisElement>;

BasisElement TextElement(const char* tag, std::string_view text) {
    BasisElement element;
    element.tag = tag;
    element.text = text;
    return element;
}

BasisElement NumberElement(const char* tag, FileUnit unit, Number value) {
    BasisElement element;
    element.tag = tag;
    element.kind = BasisElement::Kind::number;
    element.quantity = unit.quantity;
    element.number = InInternalUnit(value, unit).value_or(kEmpty);
    return element;
}

BasisElement CountElement(const char* tag, std::size_t count) {
    return NumberElement(tag, none, static_cast<double>(count));
}

BasisElement GroupElement(const char* tag, Elements elements) {
    BasisElement group;
    group.tag = tag;
    group.kind = BasisElement::Kind::group;
    group.elements = std::move(elements);
    return group;
}

struct PackageRow {
    const char* element;
    const char* tag;
    FileUnit unit;
};
constexpr PackageRow kPackageNumbers[] = {
    {"ReactionHeat", "ReactionHeat", kj_per_kmol},
    {"ReactionGibbsEnergy", "ReactionGibbsEnergy", kj_per_kmol},
    {"Tmin", "MinimumTemperature", kelvin},
    {"Tmax", "MaximumTemperature", kelvin},
};

const std::vector<Choice> kPhaseWords = {
    {"Vapor", names::kVapourPhase}, {"Liquid", names::kLiquidPhase}, {"Mixture", names::kOverall}};

BasisElement ReactantElement(Reading& reading, const char* tag, XmlNode compound) {
    const auto value = compound.Attribute("StoichCoeff");
    return GroupElement(
        tag, {TextElement("ComponentName", compound.Attribute("Name").value_or("")),
              NumberElement("StoichiometricCoefficient", none,
                            value ? ParseNumber(reading, compound, *value) : std::nullopt)});
}

void AddReactants(Reading& reading, XmlNode node, Elements& elements) {
    const XmlNode list = node.ChildWithElements("Compounds");
    Elements reactants = OfChildren<BasisElement>(
        list, [&](XmlNode compound) { return ReactantElement(reading, "Reactant", compound); });
    reactants.insert(reactants.begin(), CountElement("NumberOfReactants", reactants.size()));
    elements.push_back(GroupElement("ReactantList", std::move(reactants)));
    for (XmlNode compound : Children(list)) {
        if (compound.Attribute("Name") != node.Child("BaseReactant").Text()) continue;
        elements.push_back(ReactantElement(reading, "BaseReactant", compound));
    }
}

// A conversion is told by the expression, in percent; one that depends on the temperature has no
// number.
void AddExpression(Reading& reading, XmlNode node, Elements& elements) {
    const XmlNode expression = node.Child("Expression");
    elements.push_back(TextElement("Expression", expression.Text()));
    if (node.Child("ReactionType").Text() != "Conversion" || !IsNumber(expression.Text())) return;
    const Number conversion = ReadNumber(reading, expression);
    elements.push_back(NumberElement("Conversion", percent, conversion));
}

Elements RateData(Reading& reading, XmlNode node) {
    Elements elements = {
        TextElement("Phase", Shown(kPhaseWords, node.Child("ReactionPhase").Text())),
        TextElement("Basis", node.Child("ReactionBasis").Text()),
        TextElement("EquilibriumConstantSource", node.Child("KExprType").Text())};
    for (const PackageRow& row : kPackageNumbers) {
        const XmlNode leaf = node.Child(row.element);
        elements.push_back(NumberElement(row.tag, row.unit, ReadNumber(reading, leaf)));
    }
    AddExpression(reading, node, elements);
    AddReactants(reading, node, elements);
    return elements;
}

// The rate data of a catalytic reaction are an object of their own.
BasisElement ReactionElement(Reading& reading, XmlNode node) {
    const std::string_view type = Shown(kReactionTypes, node.Child("ReactionType").Text());
    Elements elements = {TextElement("ReactionName", node.Child("Name").Text()),
                         TextElement("ReactionType", type)};
    Elements rate = RateData(reading, node);
    if (type == kCatalyticReaction) {
        elements.push_back(GroupElement("KineticBasis", std::move(rate)));
    } else {
        std::ranges::move(rate, std::back_inserter(elements));
    }
    return GroupElement("Reaction", std::move(elements));
}

constexpr Choice kSetKinds[] = {{"Conversion", "Conversion"},
                                {"Equilibrium", "Equilibrium"},
                                {"Kinetic", "Kinetic"},
                                {"Heterogeneous_Catalytic", "Catalytic Rate"}};

// "Conversion, Equilibrium and Kinetic"
std::string KindsOf(const std::vector<SetMember>& members) {
    std::vector<const char*> kinds;
    for (const Choice& kind : kSetKinds) {
        const bool holds = std::ranges::any_of(members, [&](const SetMember& member) {
            return member.reaction.Child("ReactionType").Text() == kind.word;
        });
        if (holds) kinds.push_back(kind.shown);
    }
    if (kinds.empty()) return "Empty";
    if (kinds.size() == std::size(kSetKinds)) return "All Kinds";
    std::string text = kinds[0];
    for (std::size_t i = 1; i < kinds.size(); ++i) {
        text += i + 1 < kinds.size() ? ", " : " and ";
        text += kinds[i];
    }
    return text;
}

BasisElement HalfOfSet(const std::vector<SetMember>& members, bool active) {
    Elements elements;
    for (const SetMember& member : members) {
        if (member.is_active != active) continue;
        elements.push_back(
            TextElement(active ? "ActiveReaction" : "InactiveReaction", member.Name()));
    }
    const char* count = active ? "NumberOfActiveRxns" : "NumberOfInactiveRxns";
    elements.insert(elements.begin(), CountElement(count, elements.size()));
    return GroupElement(active ? "ActiveReactionList" : "InactiveReactionList",
                        std::move(elements));
}

BasisElement SetElement(Reading& reading, XmlNode root, XmlNode set, std::string_view package) {
    const std::vector<SetMember> members = MembersOf(reading, root, set);
    Elements ranks;
    for (const SetMember& member : members) {
        ranks.push_back(
            GroupElement("ReactionRankSet", {NumberElement("ReactionRank", none, member.rank)}));
    }
    return GroupElement("ReactionSet", {TextElement("ReactionSetName", set.Child("Name").Text()),
                                        TextElement("ReactionSetType", KindsOf(members)),
                                        TextElement("PropertyPackage", package),
                                        HalfOfSet(members, true), HalfOfSet(members, false),
                                        GroupElement("ReactionRanks", std::move(ranks))});
}

BasisElement Package(Reading& reading, XmlNode root, std::string_view package) {
    Elements reactions = OfChildren<BasisElement>(
        root.Child("Reactions"), [&](XmlNode node) { return ReactionElement(reading, node); });
    reactions.insert(reactions.begin(), CountElement("NumberOfReactions", reactions.size()));
    Elements sets = OfChildren<BasisElement>(root.Child("ReactionSets"), [&](XmlNode set) {
        return SetElement(reading, root, set, package);
    });
    sets.insert(sets.begin(), CountElement("NumberOfReactionSets", sets.size()));
    return GroupElement("ReactionPackage", {GroupElement("ReactionList", std::move(reactions)),
                                            GroupElement("ReactionSetList", std::move(sets))});
}

XmlNode FindReaction(Reading& reading, XmlNode root, const std::string& id) {
    if (reading.reactions.empty()) {
        for (XmlNode reaction : Children(root.Child("Reactions"))) {
            reading.reactions.emplace(reaction.Child("ID").Text(), reaction);
        }
    }
    const auto found = reading.reactions.find(id);
    return found == reading.reactions.end() ? XmlNode() : found->second;
}

}  // namespace

std::string SetMember::Name() const {
    const std::string_view name = reaction.Child("Name").Text();
    return name.empty() ? id : std::string(name);
}

XmlNode FindReactionSet(XmlNode root, std::string_view id) {
    for (XmlNode set : Children(root.Child("ReactionSets"))) {
        if (set.Child("ID").Text() == id) return set;
    }
    return {};
}

std::vector<SetMember> MembersOf(Reading& reading, XmlNode root, XmlNode set) {
    auto members = OfChildren<SetMember>(set.Child("Reactions"), [&](XmlNode entry) {
        SetMember member;
        member.id = entry.Attribute("ReactionID").value_or("");
        member.is_active = EqualIgnoringCase(entry.Attribute("IsActive").value_or(""), "true");
        if (const auto rank = entry.Attribute("Rank")) {
            member.rank = ParseNumber(reading, entry, *rank);
        }
        member.reaction = FindReaction(reading, root, member.id);
        return member;
    });
    std::stable_partition(members.begin(), members.end(), std::mem_fn(&SetMember::is_active));
    return members;
}

void ReadReactions(Reading& reading, XmlNode root, CaseData& data) {
    const XmlNode list = root.Child("Reactions");
    for (XmlNode node : Children(list)) data.reactions.push_back(ReadReaction(reading, node));
    if (list.FirstChild()) data.basis.push_back(Package(reading, root, data.property_package));
}

}  // namespace fixtop::casehost::importer
