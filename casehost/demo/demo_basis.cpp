#include "demo/demo_basis.h"

namespace fixtop::casehost::demo {

namespace {

using Kind = BasisElement::Kind;
using Elements = std::vector<BasisElement>;

BasisElement Make(const char* tag, Kind kind) {
    BasisElement element;
    element.tag = tag;
    element.kind = kind;
    return element;
}

BasisElement Group(const char* tag, Elements elements) {
    BasisElement element = Make(tag, Kind::group);
    element.elements = std::move(elements);
    return element;
}

BasisElement Words(const char* tag, const char* text, Kind kind = Kind::text) {
    BasisElement element = Make(tag, kind);
    element.text = text;
    return element;
}

BasisElement Number(const char* tag, double number, const char* quantity = "") {
    BasisElement element = Make(tag, Kind::number);
    element.number = number;
    element.quantity = quantity;
    return element;
}

// An empty number is a variable without a value.
BasisElement Variable(const char* tag, const char* quantity, double number, VariableState state) {
    BasisElement element = Make(tag, Kind::variable);
    element.number = number;
    element.quantity = quantity;
    element.state = number == kEmpty ? VariableState::missing : state;
    return element;
}

BasisElement FluidPackage() {
    BasisElement reference =
        Variable("Reference Temperature", "Temperature", 25, VariableState::specified);
    reference.fixed = true;
    BasisElement tuned = Variable("Tuned Pressure", "Pressure", 3000, VariableState::specified);
    tuned.adjustable = true;
    BasisElement level = Make("Effort", Kind::custom);
    level.number = 2;
    BasisElement table = Make("Interaction Parameters", Kind::table);
    table.columns = {{"First", {0, 0, 1}, {}},
                     {"Second", {1, 2, 2}, {}},
                     {"Kij", {-0.017, 0.031, 0.107}, {}},
                     {kObjectColumn, {}, {"Raw Gas", "", "Tail Gas"}}};
    return Group(
        "FluidPackage",
        {Words("Name", "Basis-1"), Words("Enthalpy Method", "Ideal gas"),
         Words("Remark", "Made for the plant.", Kind::custom), level,
         Make("Package Status", Kind::status), Number("Standard Pressure", 101.325, "Pressure"),
         Number("Number of Compounds", 8), reference, tuned,
         Variable("Vapour Pressure", "Pressure", 900, VariableState::calculated),
         Variable("Flash Point", "Temperature", kEmpty, VariableState::missing),
         Words("Reference Stream", "Raw Gas", Kind::object), table,
         Words("Options", "<options flash=\"two phases\"/>", Kind::document)});
}

BasisElement Reaction(const char* name, const char* type, Elements more) {
    Elements elements = {Words("ReactionName", name), Words("ReactionType", type)};
    elements.insert(elements.end(), more.begin(), more.end());
    return Group("Reaction", std::move(elements));
}

// The rate data of a reaction lie in a group of their own; terms of the denominator are listed by
// repeated elements, the exponents row by row.
Elements RateData() {
    const auto reactant = [](const char* compound, double coefficient) {
        return Group("Reactant", {Words("ComponentName", compound),
                                  Number("StoichiometricCoefficient", coefficient)});
    };
    return {Group("KineticBasis",
                  {Number("BalanceError", 0), Words("Phase", "Vapour Phase"),
                   Group("ReactantList", {Number("NumberOfReactants", 2), reactant("Methane", -1),
                                          reactant("H2O", -2)})}),
            Number("NumberOfReactants", 2),
            Number("NumberOfRows", 2),
            Number("PreFactor", 1.5e-3),
            Number("PreFactor", 4.0e-4),
            Number("ActivationEnergy", 42000, "MolarEnthalpy"),
            Number("ActivationEnergy", 61000, "MolarEnthalpy"),
            Number("Exponents", 1),
            Number("Exponents", 0),
            Number("Exponents", 0),
            Number("Exponents", 1)};
}

BasisElement ReactionSet(const char* name, const std::vector<const char*>& active,
                         const std::vector<const char*>& inactive) {
    const auto list = [](const char* tag, const char* count, const char* item,
                         const std::vector<const char*>& names) {
        Elements elements = {Number(count, static_cast<double>(names.size()))};
        for (const char* each : names) elements.push_back(Words(item, each));
        return Group(tag, std::move(elements));
    };
    Elements ranks;
    for (std::size_t i = 0; i < active.size() + inactive.size(); ++i) {
        ranks.push_back(Group("ReactionRankSet", {Number("ReactionRank", static_cast<double>(i))}));
    }
    return Group(
        "ReactionSet",
        {Words("ReactionSetName", name),
         list("ActiveReactionList", "NumberOfActiveRxns", "ActiveReaction", active),
         list("InactiveReactionList", "NumberOfInactiveRxns", "InactiveReaction", inactive),
         Group("ReactionRanks", std::move(ranks))});
}

BasisElement ReactionPackage() {
    return Group(
        "ReactionPackage",
        {Group(
             "ReactionList",
             {Number("NumberOfReactions", 3),
              Reaction("Reforming", "LHKineticRxnObject", RateData()),
              Reaction("Combustion", "ConversionRxnObject", {Number("Conversion", 100, "Percent")}),
              Words("Comment", "Water is in excess."),
              Reaction("Shift", "EquilibriumRxnObject", {Number("BalanceError", 0)})}),
         Group("ReactionSetList", {Number("NumberOfReactionSets", 2),
                                   ReactionSet("Set-1", {"Reforming", "Shift"}, {"Combustion"}),
                                   ReactionSet("Set-2", {"Combustion"}, {})})});
}

}  // namespace

std::vector<BasisElement> Basis() {
    return {FluidPackage(), ReactionPackage()};
}

}  // namespace fixtop::casehost::demo
