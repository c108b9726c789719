// SPDX-License-Identifier: Apache-2.0
// The functions over live cases: what they answer there was counted in the case's own lists.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "casehost/standard_host.h"
#include "fixtop/semantic_functions.h"
#include "framework/iterator/iterator.h"
#include "framework/nodes/top_entry.h"
#include "host/adapter.h"
#include "host/levels/model_nodes.h"
#include "semantic/raw_tree.h"

namespace fixtop {

namespace {

using NodeRef = Ref<FIIteratorBase>;
using Elements = std::vector<ListElement>;

class SemanticCase : public testing::Test {
 protected:
    ~SemanticCase() override { TheAdapter().Install(nullptr); }

    void Open(const std::string& name) {
        casehost::UseStandardParts(host_);
        ASSERT_TRUE(casehost::OpenCase(host_, name)) << name;
        TheAdapter().Install(&host_.Services());
    }
    NodeRef Flowsheet() {
        auto models = Ref<HAandCContext>::Share(new HAandCContext(host_.ActiveCase(), {}));
        auto it = NodeRef::Adopt(new FIIterator(Child(*models, "appModel").Get(), false));
        EXPECT_TRUE(it->SeekPath(FIValue("FlowSheetObjects")));
        return it;
    }
    NodeRef Stream(const char* name) {
        NodeRef it = Flowsheet();
        EXPECT_TRUE(it->SeekPath(FIValue("Streams")) && it->SeekPath(FIValue(name))) << name;
        return it;
    }
    // A node of the case, from the top as the neutral view stands on it.
    NodeRef FromTop(const char* path) {
        auto models = Ref<HAandCContext>::Share(new HAandCContext(host_.ActiveCase(), {}));
        auto top = Ref<FIEntry>::Share(new FITopEntry(models.Get(), nullptr, nullptr));
        auto it = NodeRef::Adopt(new FIIterator(top.Get(), false));
        EXPECT_TRUE(it->SeekPath(FIValue(path))) << path;
        return it;
    }
    static std::string NamesOf(const Elements& elements) {
        std::string names;
        for (const ListElement& element : elements) {
            names += (names.empty() ? "" : ", ") + element.name;
        }
        return names;
    }
    // "Methane 0.75" of the row to which a step leads, "(none)" when there is none.
    static std::string RowAt(FIIteratorBase& it, SemanticFunction step) {
        const int depth = it.Depth();
        if (!Call(step, &it, 0)) return "(none)";
        EXPECT_EQ(depth, it.Depth());
        NodeRef row = NodeRef::Adopt(it.Copy());
        EXPECT_TRUE(Call(step, row.Get(), 1));
        FIValue value;
        row->GetAttribute(FIValue("value"), value);
        char text[64];
        std::snprintf(text, sizeof text, "%s %.4f", NameAt(*row).c_str(), value.AsDouble());
        return text;
    }

    casehost::CaseHost host_{false};
};

TEST_F(SemanticCase, the_built_in_case_has_its_lists) {
    Open("demo");
    NodeRef it = Flowsheet();
    EXPECT_EQ(
        "Raw Gas, Tail Gas, Mixed Gas, Chilled Gas, Cold Gas, Cold Liquid, Expanded Gas, Warm Gas, "
        "Sales Gas, Fuel Gas, Let Down Liquid, Flash Gas, Compressed Gas, Cooled Gas, Condensate, "
        "Pumped Condensate, Warm Condensate, Stabiliser Gas, Stable Condensate, Column Feed, "
        "Distillate, Bottoms, Prereformer Feed, Prereformed Gas, Reformed Gas, Propane Feed, Light "
        "Alkanes, "
        "Heavy Alkanes, Heavy Feed, Overhead Gas, Condensed Water, Bottoms Vapour, Bottoms Water, "
        "Butane Cut, Side Cut",
        NamesOf(ReadList(CTStreams, *it)));
    EXPECT_EQ(
        "Chiller Duty, Expander Power, Compressor Power, Pump Power, Heater Duty, Prereformer "
        "Duty, Disproportionation Duty, Reformer Duty, Q Condenser, Q Reboiler, Q PA-1, Q "
        "Stripper, Q Rectifier",
        NamesOf(ReadList(CTHeatStreams, *it)));
    EXPECT_EQ("Stabiliser, T-100 Flowsheet, K-100 Curves, Machine Curves, E-101 Parts, Vessels",
              NamesOf(ReadList(CTFlowsheets, *it)));
    EXPECT_EQ("Sales Gas Envelope", NamesOf(ReadList(CTPhaseEnvelopes, *it)));
    EXPECT_EQ("Condensate Curve", NamesOf(ReadList(CTDistillationCurves, *it)));
    EXPECT_EQ((Elements{{"MIX-100", "QSIMixer"},
                        {"E-100", "QSIHeaterCooler"},
                        {"V-100", "QSISeparator"},
                        {"EX-100", "QSICompressor"},
                        {"VLV-100", "QSIValve"},
                        {"V-101", "QSISeparator"},
                        {"K-100", "QSICompressor"},
                        {"E-101", "QSIHeatExchanger"},
                        {"TEE-100", "QSITee"},
                        {"P-100", "QSIPump"},
                        {"E-102", "QSIHeaterCooler"},
                        {"T-100", "QSIDistillationColumn"},
                        {"PL-100", "QSIPipe"},
                        {"CRV-100", "QSIConversionReactor"},
                        {"ERV-100", "QSIEquilibriumReactor"},
                        {"GBR-100", "QSIGibbsReactor"}}),
              ReadList(CTUnitOperations, *it));
    EXPECT_EQ(1, it->Depth());
}

TEST_F(SemanticCase, expanders_and_compressors_are_told_apart) {
    Open("demo");
    for (const auto& [index, word] : {std::pair{3, "NO"}, {6, "YES"}}) {
        NodeRef it = Flowsheet();
        FIValue subclass;
        Call(CTUnitOperations, it.Get(), &subclass, index);
        EXPECT_EQ(word, Variable(*it, "IsCompressor")) << NameAt(*it);
    }
}

TEST_F(SemanticCase, a_stream_has_a_row_for_each_component) {
    Open("demo");
    NodeRef it = Stream("Raw Gas");
    ASSERT_EQ(8, Call(CTComponentArray, it.Get(), nullptr, kCountIndex));
    EXPECT_EQ(8, Call(CTPhaseComponentArray, it.Get(), nullptr, kCountIndex));
    Call(CTComponentArray, it.Get(), nullptr, 2);
    EXPECT_EQ("Methane 0.7500", RowAt(*it, CTComponent));
    EXPECT_EQ("Methane 0.7500", RowAt(*it, CTMoleFraction));
    // 0.75 * 16.0428 / 22.258
    EXPECT_EQ("Methane 0.5406", RowAt(*it, CTMassFraction));
    EXPECT_EQ("(none)", RowAt(*it, CTKVL2));

    Call(CTPhaseComponentArray, it.Get(), nullptr, 2);
    EXPECT_EQ("(none)", RowAt(*it, CTPhaseMoleFraction));
    it->SetVarText("PhaseName", "Overall");
    EXPECT_EQ("Methane 0.7500", RowAt(*it, CTPhaseMoleFraction));
    it->SetVarText("PhaseName", "Solid Phase");
    EXPECT_EQ("(none)", RowAt(*it, CTPhaseMoleFraction));
}

TEST_F(SemanticCase, a_segment_lies_behind_the_cells_of_those_before_it) {
    Open("demo");
    NodeRef it = FromTop("appModel.FlowSheetObjects.UnitOps.PL-100");
    ASSERT_EQ(3, Call(CTPipeSegment, it.Get(), nullptr, kCountIndex));
    Call(CTPipeSegment, it.Get(), nullptr, 2);
    EXPECT_EQ("INT 7", Variable(*it, "SegStartCell"));
    EXPECT_EQ("INT 5", Variable(*it, "SegNumCell"));
    ASSERT_TRUE(it->SeekPath(FIValue("\"Pipe Length\".%SegElemNum")));
    EXPECT_EQ("REAL 800", Read(*it, "value"));
}

TEST_F(SemanticCase, a_compressor_has_its_curves) {
    Open("demo");
    NodeRef it = FromTop("appModel.FlowSheetObjects.UnitOps.K-100");
    ASSERT_EQ(2, Call(CTComprPerfCurve, it.Get(), nullptr, kCountIndex));
    Call(CTComprPerfCurve, it.Get(), nullptr, 1);
    EXPECT_EQ("High Speed", Read(*it, "value"));
    EXPECT_EQ(3, Call(CTPerfCurvePoint, it.Get(), nullptr, kCountIndex));
}

TEST_F(SemanticCase, reactions_of_the_package_have_classes) {
    Open("demo");
    NodeRef it = FromTop("appModel.Basis.ReactionPackage");
    EXPECT_EQ((Elements{{"Reaction", "QSICatalyticRateReaction"},
                        {"Reaction", "QSIConversionReaction"},
                        {"Reaction", "QSIEquilibriumReaction"},
                        {"Reaction", "QSIReversibleKineticReaction"},
                        {"Reaction", "QSISimpleRateReaction"},
                        {"Reaction", "QSIConversionReaction"},
                        {"Reaction", "QSIConversionReaction"},
                        {"Reaction", "QSIEquilibriumReaction"},
                        {"Reaction", "QSIEquilibriumReaction"}}),
              ReadList(CTReactions, *it));
    FIValue subclass;
    Call(CTReactions, it.Get(), &subclass, 0);
    ASSERT_EQ(2, Call(CTReactionDenominatorTerm, it.Get(), nullptr, kCountIndex));
    ASSERT_EQ(4, Call(CTReactionComponentOrder, it.Get(), nullptr, kCountIndex));
    Call(CTReactionDenominatorTerm, it.Get(), nullptr, 1);
    Call(CTReactionComponentOrder, it.Get(), nullptr, 1);
    EXPECT_EQ("REAL 0.0004", Variable(*it, "A"));
    EXPECT_EQ("REAL 61000", Variable(*it, "E"));
    EXPECT_EQ("REAL 1", Variable(*it, "exponent"));
    EXPECT_EQ("H2O", Variable(*it, "component"));
}

TEST_F(SemanticCase, a_set_lists_its_reactions_with_ranks) {
    Open("demo");
    NodeRef it = FromTop("appModel.Basis.ReactionPackage.ReactionSetList.ReactionSet");
    ASSERT_EQ(3, Call(CTActiveReactions, it.Get(), nullptr, kCountIndex));
    Call(CTActiveReactions, it.Get(), nullptr, 1);
    EXPECT_EQ("Shift", Variable(*it, "RxnID"));
    EXPECT_EQ("INT 1", Variable(*it, "RxnActive"));
    EXPECT_EQ("REAL 1", Variable(*it, "RxnRank"));
    Call(CTActiveReactions, it.Get(), nullptr, 2);
    EXPECT_EQ("Combustion", Variable(*it, "RxnID"));
    EXPECT_EQ("INT 0", Variable(*it, "RxnActive"));
    EXPECT_EQ("REAL 2", Variable(*it, "RxnRank"));
    Call(CTActiveReactions, it.Get(), nullptr, 3);
    EXPECT_EQ("Combustion", Variable(*it, "RxnID")) << "there is no fourth one";
    EXPECT_EQ("(NULL)", Variable(*it, "RxnRank"));
}

TEST_F(SemanticCase, a_reactor_names_the_reactions_of_its_set) {
    Open("demo");
    NodeRef it = FromTop("appModel.FlowSheetObjects.UnitOps.ERV-100");
    ASSERT_EQ(2, Call(CTLocalReaction, it.Get(), nullptr, kCountIndex));
    Call(CTLocalReaction, it.Get(), nullptr, 0);
    EXPECT_EQ("Propane Disproportionation", Variable(*it, "RxnName"));
    Call(CTLocalReaction, it.Get(), nullptr, 1);
    EXPECT_EQ("Butane Disproportionation", Variable(*it, "RxnName"));

    it = FromTop("appModel.FlowSheetObjects.UnitOps.GBR-100");
    ASSERT_EQ(8, Call(CTGibbsFlowSpec, it.Get(), nullptr, kCountIndex));
    Call(CTGibbsFlowSpec, it.Get(), nullptr, 2);
    EXPECT_EQ("Methane", Variable(*it, "GibbsFlowSpecComponentName"));
    Call(CTReactantBalance, it.Get(), nullptr, 7);
    EXPECT_EQ("H2O", Variable(*it, "CompName"));
}

TEST_F(SemanticCase, a_column_has_its_stages_and_leads_to_its_products) {
    Open("demo");
    NodeRef it = Flowsheet();
    FIValue subclass;
    Call(CTUnitOperations, it.Get(), &subclass, 11);
    ASSERT_EQ("T-100", NameAt(*it));
    ASSERT_EQ(12, Call(CTColumnStages, it.Get(), nullptr, kCountIndex));
    std::string kinds;
    for (int stage = 0; stage < 12; ++stage) {
        Call(CTColumnStages, it.Get(), nullptr, stage);
        kinds += Variable(*it, "IsCondenser") == "INT 1"  ? 'C'
                 : Variable(*it, "IsReboiler") == "INT 1" ? 'R'
                 : Variable(*it, "IsFeed") == "INT 1"     ? 'F'
                                                          : '.';
    }
    EXPECT_EQ("C...F....F.R", kinds);
    for (const auto& [step, stream] : {std::pair{&CTCondDistillate, "Distillate"},
                                       {&CTCondVapor, "Overhead Gas"},
                                       {&CTRebLiquid, "Bottoms"}}) {
        NodeRef at = NodeRef::Adopt(it->Copy());
        EXPECT_TRUE(Call(step, at.Get(), 1)) << stream;
        EXPECT_EQ(stream, NameAt(*at));
        EXPECT_EQ("MaterialStreamObject", Read(*at, "type"));
    }
}

TEST_F(SemanticCase, a_recorded_column_has_its_bottom_stage) {
    const char* given = std::getenv("FIXTOP_CASES");
    const auto file = std::filesystem::path(given ? given : FIXTOP_CASES) / "real" /
                      "benzene-toluene-distillation.dwxmz";
    if (!std::filesystem::exists(file)) GTEST_SKIP() << "no sample case " << file;
    Open(file.string());
    NodeRef it = Flowsheet();
    EXPECT_EQ((Elements{{"HX-1", "QSIHeatExchanger"}, {"T-101", "QSIDistillationColumn"}}),
              ReadList(CTUnitOperations, *it));
    FIValue subclass;
    Call(CTUnitOperations, it.Get(), &subclass, 1);
    // It was drawn with 30 stages, the condenser and the reboiler among them.
    EXPECT_EQ("INT 29", Variable(*it, "Bottom"));
    EXPECT_EQ(
        "raw feed, hot utility, preheated feed, utility out, benzene product, toluene product",
        NamesOf(ReadList(CTStreams, *Flowsheet())));
    NodeRef feed = Stream("raw feed");
    Call(CTComponentArray, feed.Get(), nullptr, 1);
    EXPECT_EQ("Toluene 0.5000", RowAt(*feed, CTMoleFraction));
}

}  // namespace

}  // namespace fixtop
