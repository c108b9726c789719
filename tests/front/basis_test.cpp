// SPDX-License-Identifier: Apache-2.0
// The basis of the built-in case, walked as a program that loads the module walks it.

#include <gtest/gtest.h>

#include "open_module.h"

#include "live/case.h"

namespace fixtop {

namespace {

class ModuleOnBasis : public OpenModule {
 protected:
    ModuleOnBasis() { root_ = "appModel.Basis"; }
    void SetUp() override {
        OpenModule::SetUp();
        casehost::UseStandardParts(host_);
        ASSERT_TRUE(casehost::OpenCase(host_, "demo"));
        OpenTop();
    }
};

TEST_F(ModuleOnBasis, lists_what_has_something_to_show) {
    EXPECT_EQ(
        Names({"Property Package", "Compounds", "Constants", "FluidPackage", "ReactionPackage"}),
        Children(""));
    EXPECT_EQ(
        Names({"Name", "Enthalpy Method", "Remark", "Effort", "Package Status", "Standard Pressure",
               "Number of Compounds", "Reference Temperature", "Tuned Pressure", "Vapour Pressure",
               "Reference Stream", "Interaction Parameters", "Options"}),
        Children("FluidPackage"))
        << "the variable without a value is not shown";
}

TEST_F(ModuleOnBasis, elements_read_by_their_type) {
    struct Case {
        const char* path;
        const char* type;
        const char* value;
        const char* unit;
        const char* status;
    };
    const Case cases[] = {
        {"Property Package", "Text", "Ideal with Wilson K-values", "(NULL)", "(NULL)"},
        {"FluidPackage", "SpecCollection", "", "(NULL)", "(NULL)"},
        {"FluidPackage.Name", "Text", "Basis-1", "(NULL)", "(NULL)"},
        {"FluidPackage.Remark", "CustomElement", "Made for the plant.", "(NULL)", "(NULL)"},
        {"FluidPackage.Effort", "CustomElement", "2", "(NULL)", "(NULL)"},
        {"FluidPackage.\"Package Status\"", "ProcVarStatus", "", "(NULL)", "(NULL)"},
        {"FluidPackage.\"Standard Pressure\"", "Number", "101.325", "kPa", "(NULL)"},
        {"FluidPackage.\"Number of Compounds\"", "Number", "8", "(NULL)", "(NULL)"},
        {"FluidPackage.\"Reference Temperature\"", "ProcVar", "25", "C", "Specified"},
        {"FluidPackage.\"Tuned Pressure\"", "ProcVar", "3000", "kPa", "Adjustable"},
        {"FluidPackage.\"Vapour Pressure\"", "ProcVar", "900", "kPa", "Calculated"},
        {"FluidPackage.\"Reference Stream\"", "AttachedObject", "Raw Gas", "(NULL)", "(NULL)"},
        {"FluidPackage.\"Interaction Parameters\"", "ArraySet", "", "(NULL)", "(NULL)"},
        {"FluidPackage.Options", "XMLSpecInfo", "", "(NULL)", "(NULL)"},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(each.type, Read(each.path, "type")) << each.path;
        EXPECT_EQ(each.value, Read(each.path)) << each.path;
        EXPECT_EQ(each.unit, Read(each.path, "uom")) << each.path;
        EXPECT_EQ(each.status, Read(each.path, "status")) << each.path;
    }
    EXPECT_EQ("/FluidPkgMgr.300", Read("FluidPackage", "moniker"));
    EXPECT_EQ(0u, Read("FluidPackage.Name", "moniker").find("/FluidPkgMgr.300:Spec."));
}

TEST_F(ModuleOnBasis, array_sets_list_rows_of_texts) {
    const std::string table = "FluidPackage.\"Interaction Parameters\"";
    EXPECT_EQ("1", Read(table, "has_children"));
    EXPECT_EQ(Names({"Set0", "Set1", "Set2"}), Children(table));
    EXPECT_EQ(Names({"First", "Second", "Kij", "Attachment"}), Children(table + ".Set0"));
    EXPECT_EQ("-0.017", Read(table + ".Set0.Kij"));
    EXPECT_EQ("Raw Gas", Read(table + ".Set0.Attachment"));
    EXPECT_EQ("", Read(table + ".Set1.Attachment"));
    EXPECT_EQ("2", Read(table + ".Set2.Second"));
    EXPECT_EQ("ArraySetRow", Read(table + ".Set2", "type"));
    EXPECT_EQ("ArraySetElement", Read(table + ".Set2.Kij", "type"));
    EXPECT_EQ(8u, Children("Constants").size()) << "one row for each compound";
}

TEST_F(ModuleOnBasis, reactions_are_found_among_the_children_of_their_list) {
    const std::string list = "ReactionPackage.ReactionList";
    EXPECT_EQ(Names({"NumberOfReactions", "Reaction", "Reaction", "Comment", "Reaction", "Reaction",
                     "Reaction", "Reaction", "Reaction", "Reaction", "Reaction"}),
              Children(list));
    EXPECT_EQ("Reforming", Read(list + ".Reaction.ReactionName")) << "the first of the key";
    EXPECT_EQ("Combustion", Read(list + ".Reaction#1.ReactionName"));
    EXPECT_EQ("Shift", Read(list + ".Reaction#2.ReactionName"));
    EXPECT_EQ("Reaction-1", Read(list + ".Reaction", "id"));
    EXPECT_EQ("Reaction-2", Read(list + ".Reaction#1", "id"));
    EXPECT_EQ("Reaction-3", Read(list + ".Reaction#2", "id"));
    EXPECT_EQ("LHKineticRxnObject", Read(list + ".Reaction.ReactionType"));
    const std::string rate = list + ".Reaction";
    EXPECT_EQ("4", Read(rate + ".KineticBasis.ReactantList.NumberOfReactants"));
    EXPECT_EQ("H2O", Read(rate + ".KineticBasis.ReactantList.Reactant#1.ComponentName"));
    EXPECT_EQ("2", Read(rate + ".NumberOfRows"));
    EXPECT_EQ("0.0004", Read(rate + ".PreFactor#1"));
    EXPECT_EQ("61000", Read(rate + ".ActivationEnergy#1"));
    EXPECT_EQ("1", Read(rate + ".Exponents#5"));
}

TEST_F(ModuleOnBasis, reaction_sets_list_active_and_inactive_reactions) {
    const std::string list = "ReactionPackage.ReactionSetList";
    EXPECT_EQ("5", Read(list + ".NumberOfReactionSets"));
    EXPECT_EQ("Set-1", Read(list + ".ReactionSet#0.ReactionSetName"));
    EXPECT_EQ("Set-2", Read(list + ".ReactionSet#1.ReactionSetName"));
    EXPECT_EQ("(no node)", Read(list + ".ReactionSet#5.ReactionSetName"));
    const std::string set = list + ".ReactionSet";
    EXPECT_EQ("2", Read(set + ".ActiveReactionList.NumberOfActiveRxns"));
    EXPECT_EQ("Shift", Read(set + ".ActiveReactionList.ActiveReaction#1"));
    EXPECT_EQ("1", Read(set + ".InactiveReactionList.NumberOfInactiveRxns"));
    EXPECT_EQ("Combustion", Read(set + ".InactiveReactionList.InactiveReaction"));
    EXPECT_EQ("2", Read(set + ".ReactionRanks.ReactionRankSet#2.ReactionRank"));
    EXPECT_EQ("0", Read(list + ".ReactionSet#1.InactiveReactionList.NumberOfInactiveRxns"));
}

TEST_F(ModuleOnBasis, variables_are_stored_and_stay) {
    const char* vapour = "FluidPackage.\"Vapour Pressure\"";
    EXPECT_EQ("(NULL)", Write(vapour, FIValue::OfReal(950), 1));
    EXPECT_EQ("900", Read(vapour)) << "it is not specified yet";
    EXPECT_EQ("(NULL)", Write(vapour, FIValue::OfReal(910), 2));
    EXPECT_EQ("910", Read(vapour));
    EXPECT_EQ("Calculated", Read(vapour, "status"));
    EXPECT_EQ("(NULL)", Write(vapour, FIValue::OfReal(920), 0));
    EXPECT_EQ("920", Read(vapour));
    EXPECT_EQ("Specified", Read(vapour, "status"));
    EXPECT_EQ("(NULL)", Write(vapour, FIValue::OfReal(930), 1));
    EXPECT_EQ("930", Read(vapour));
    EXPECT_EQ("Cannot specify this value.",
              Write("FluidPackage.\"Reference Temperature\"", FIValue::OfReal(30), 0));
    EXPECT_EQ("25", Read("FluidPackage.\"Reference Temperature\""));
    EXPECT_EQ("Store not supported for this attribute.",
              Write("FluidPackage.Effort", FIValue::OfReal(3), 0));
}

// The built-in basis would be in C and kPa: 101.325 kPa are 14.6959487755 psia.
TEST_F(OpenModule, numbers_of_a_basis_are_in_the_unit_that_is_told) {
    casehost::CaseData data;
    data.unit_set = 2;
    data.basis.resize(2);
    data.basis[0].tag = "Standard Pressure";
    data.basis[0].kind = casehost::BasisElement::Kind::number;
    data.basis[0].number = 101.325;
    data.basis[0].quantity = "Pressure";
    data.basis[1].tag = "Reference Temperature";
    data.basis[1].kind = casehost::BasisElement::Kind::variable;
    data.basis[1].number = 25;
    data.basis[1].quantity = "Temperature";
    ASSERT_TRUE(host_.Open(data));
    OpenTop();
    root_ = "appModel.Basis";
    EXPECT_EQ("14.6959487755", Read("Standard Pressure"));
    EXPECT_EQ("psia", Read("Standard Pressure", "uom"));
    EXPECT_EQ("77", Read("Reference Temperature"));
    EXPECT_EQ("F", Read("Reference Temperature", "uom"));
    EXPECT_EQ("(NULL)", Write("Reference Temperature", FIValue::OfReal(212), 0));
    EXPECT_EQ("212", Read("Reference Temperature"));
    EXPECT_NEAR(100, host_.ActiveLiveCase()->ToData().basis[1].number, 1e-9);
}

}  // namespace

}  // namespace fixtop
