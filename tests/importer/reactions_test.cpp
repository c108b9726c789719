// SPDX-License-Identifier: Apache-2.0
// Reactions, their sets and the reactors that use them: as the basis, and as variables of reactors.

#include <gtest/gtest.h>

#include "case_reading.h"
#include "casehost/importer.h"

namespace fixtop::casehost::test {

namespace {

// Two reactions; the second is listed first in the set, but is not active.
constexpr char kReactions[] =
    "<ReactionSets><ReactionSet><ID>S1</ID><Name>Main set</Name><Reactions>"
    "<Reaction ReactionID=\"r2\" Rank=\"4\" IsActive=\"false\"/>"
    "<Reaction ReactionID=\"r1\" Rank=\"3\" IsActive=\"true\"/>"
    "</Reactions></ReactionSet></ReactionSets>"
    "<Reactions><Reaction><ID>r1</ID><Name>First</Name><ReactionType>Conversion</ReactionType>"
    "<BaseReactant>A</BaseReactant><ReactionPhase>Vapor</ReactionPhase>"
    "<ReactionBasis>Activity</ReactionBasis><Expression>40</Expression>"
    "<ReactionHeat>-500</ReactionHeat><Tmin>300</Tmin><Compounds>"
    "<Compound Name=\"A\" StoichCoeff=\"-2\"/><Compound Name=\"B\" StoichCoeff=\"1\"/></Compounds>"
    "</Reaction><Reaction><ID>r2</ID><Name>Second</Name>"
    "<ReactionType>Heterogeneous_Catalytic</ReactionType><BaseReactant>B</BaseReactant>"
    "<Compounds><Compound Name=\"B\" StoichCoeff=\"-1\"/></Compounds></Reaction></Reactions>";

void Replace(std::string& text, std::string_view from, std::string_view to) {
    const std::size_t place = text.find(from);
    ASSERT_NE(place, std::string::npos) << from;
    text.replace(place, from.size(), to);
}

// The heater of the small flowsheet as a reactor. It takes 2.5 mol/s of A and 7.5 of B.
std::unique_ptr<CaseData> ReadReactor(const std::string& elements) {
    std::string text = SmallFlowsheetWith("UnitOperations.Heater", "Reactors.Reactor_Conversion");
    Replace(text, "<CalcMode>OutletTemperature</CalcMode>", elements);
    for (const char* flow : {"2.5", "1.5"}) {
        Replace(text, "<MoleFraction>0.25<",
                std::string("<MolarFlow>") + flow + "</MolarFlow><MoleFraction>0.250<");
    }
    for (const char* flow : {"7.5", "8"}) {
        Replace(text, "<MoleFraction>0.75<",
                std::string("<MolarFlow>") + flow + "</MolarFlow><MoleFraction>0.750<");
    }
    text.insert(text.rfind("</DWSIM"), kReactions);
    ReadResult result = ReadDwxmzBytes(ZipOf(text), "reactor.dwxmz");
    EXPECT_NE(result.data, nullptr) << Lines(result);
    return result.data ? std::move(result.data) : std::make_unique<CaseData>();
}

constexpr char kLists[] =
    "<ReactionSetID>S1</ReactionSetID>"
    "<ReactionConversions><Reaction ID=\"r2\">0.1</Reaction><Reaction ID=\"r1\">0.4</Reaction>"
    "</ReactionConversions><ReactionExtents><ReactionExtent ID=\"r2\" Value=\"9\"/>"
    "<ReactionExtent ID=\"r1\" Value=\"0.5\"/></ReactionExtents>";

// By tags with dots; "Tag#1" is the second of its siblings. The empty element for none.
BasisElement At(const std::vector<BasisElement>& basis, std::string_view path) {
    const std::string_view step = path.substr(0, path.find('.'));
    const std::string_view tag = step.substr(0, step.find('#'));
    int skip = tag == step ? 0 : step.back() - '0';
    for (const BasisElement& element : basis) {
        if (element.tag != tag || skip-- > 0) continue;
        if (step == path) return element;
        return At(element.elements, path.substr(step.size() + 1));
    }
    ADD_FAILURE() << "no " << path;
    return {};
}

TEST(Reactions, PackageListsReactionsWithTheirRateData) {
    const auto data = ReadReactor("");
    const auto at = [&](const std::string& path) { return At(data->basis, path); };
    const std::string list = "ReactionPackage.ReactionList.";
    EXPECT_EQ(at(list + "NumberOfReactions").number, 2);
    const std::string first = list + "Reaction.";
    EXPECT_EQ(at(first + "ReactionName").text, "First");
    EXPECT_EQ(at(first + "ReactionType").text, "ConversionRxnObject");
    EXPECT_EQ(at(first + "Phase").text, "Vapour Phase");
    EXPECT_EQ(at(first + "ReactionHeat").number, -500);
    EXPECT_EQ(at(first + "ReactionHeat").quantity, "MolarEnthalpy");
    EXPECT_NEAR(at(first + "MinimumTemperature").number, 26.85, 1e-12);
    EXPECT_EQ(at(first + "MaximumTemperature").number, kEmpty);
    EXPECT_EQ(at(first + "Conversion").number, 40);
    EXPECT_EQ(at(first + "Conversion").quantity, "Percent");
    EXPECT_EQ(at(first + "ReactantList.NumberOfReactants").number, 2);
    EXPECT_EQ(at(first + "ReactantList.Reactant#1.ComponentName").text, "B");
    EXPECT_EQ(at(first + "BaseReactant.ComponentName").text, "A");
    EXPECT_EQ(at(first + "BaseReactant.StoichiometricCoefficient").number, -2);
    const std::string second = list + "Reaction#1.";
    EXPECT_EQ(at(second + "ReactionType").text, "LHKineticRxnObject");
    EXPECT_EQ(at(second + "KineticBasis.ReactantList.Reactant.ComponentName").text, "B");
}

TEST(Reactions, SetsListActiveReactionsFirstWithTheirRanks) {
    const auto data = ReadReactor("");
    const std::string list = "ReactionPackage.ReactionSetList.";
    const auto at = [&](const std::string& path) { return At(data->basis, list + path); };
    EXPECT_EQ(at("NumberOfReactionSets").number, 1);
    EXPECT_EQ(at("ReactionSet.ReactionSetName").text, "Main set");
    EXPECT_EQ(at("ReactionSet.ReactionSetType").text, "Conversion and Catalytic Rate");
    EXPECT_EQ(at("ReactionSet.ActiveReactionList.NumberOfActiveRxns").number, 1);
    EXPECT_EQ(at("ReactionSet.ActiveReactionList.ActiveReaction").text, "First");
    EXPECT_EQ(at("ReactionSet.InactiveReactionList.NumberOfInactiveRxns").number, 1);
    EXPECT_EQ(at("ReactionSet.InactiveReactionList.InactiveReaction").text, "Second");
    EXPECT_EQ(at("ReactionSet.ReactionRanks.ReactionRankSet.ReactionRank").number, 3);
    EXPECT_EQ(at("ReactionSet.ReactionRanks.ReactionRankSet#1.ReactionRank").number, 4);
}

TEST(Reactions, FileWithoutReactionsHasNoPackage) {
    const ReadResult result = ReadDwxmzBytes(ZipOf(SmallFlowsheet()), "small.dwxmz");
    ASSERT_NE(result.data, nullptr) << Lines(result);
    EXPECT_TRUE(result.data->basis.empty());
}

// 1 mol/s is 3.6 kgmole/h.
TEST(Reactions, ExtentsAndConversionsFollowTheActiveReactionsOfTheSet) {
    const auto data = ReadReactor(kLists);
    const ObjectData* reactor = FindObject(*data, "H");
    EXPECT_EQ(Shown(*FindVariable(reactor, "Reaction Set")), "Main set");
    const VariableData& extent = *FindVariable(reactor, "Est. Molar Extent");
    ASSERT_EQ(extent.values.size(), 1u);
    EXPECT_DOUBLE_EQ(extent.values[0].number, 1.8);
    EXPECT_EQ(extent.spec->dimensions[0].naming, ElementNaming::number);
    EXPECT_EQ(FindVariable(reactor, "Base Component")->values[0].text, "A");
    const VariableData& conversion = *FindVariable(reactor, "Reaction Conversion");
    EXPECT_EQ(conversion.values[0].number, 0.4);
    EXPECT_EQ(conversion.spec->dimensions[0].labels, (std::vector<std::string>{"First", "Second"}));
    EXPECT_DOUBLE_EQ(FindValue(reactor, "Reaction Extent", "Second")->number, 32.4);
}

TEST(Reactions, ReactorTellsWhatItsStreamsCarry) {
    const auto data = ReadReactor(kLists);
    const ObjectData* reactor = FindObject(*data, "H");
    EXPECT_EQ(FindVariable(reactor, "Feed")->values[0].text, "feed");
    EXPECT_EQ(FindVariable(reactor, "Vapour")->values[0].text, "product");
    EXPECT_EQ(FindVariable(reactor, "Liquid")->values[0].state, VariableState::missing);
    struct Row {
        const char* name;
        double in, made, out, fraction;
    };
    for (const Row& row : {Row{"A", 9, -3.6, 5.4, 1.5 / 9.5}, {"B", 27, 1.8, 28.8, 8 / 9.5}}) {
        const auto number = [&](const char* variable) {
            return FindValue(reactor, variable, row.name)->number;
        };
        EXPECT_DOUBLE_EQ(number("Total Inflow"), row.in);
        EXPECT_NEAR(number("Total Reaction"), row.made, 1e-12);
        EXPECT_DOUBLE_EQ(number("Total Outflow"), row.out);
        EXPECT_DOUBLE_EQ(number("Vessel Mole Frac"), row.fraction);
    }
    EXPECT_NEAR(FindValue(reactor, "Vessel Temperature")->number, 26.85, 1e-12);
    EXPECT_DOUBLE_EQ(FindValue(reactor, "Vessel Pressure")->number, 101.325);
}

}  // namespace

}  // namespace fixtop::casehost::test
