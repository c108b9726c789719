// SPDX-License-Identifier: Apache-2.0
// The functions over live cases: what they answer there was counted in the case's own lists.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "casehost/standard_host.h"
#include "fixtop/semantic_functions.h"
#include "framework/iterator/iterator.h"
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
        if (!step(&it, 0)) return "(none)";
        EXPECT_EQ(depth, it.Depth());
        NodeRef row = NodeRef::Adopt(it.Copy());
        EXPECT_TRUE(step(row.Get(), 1));
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
        "Distillate, Bottoms",
        NamesOf(ReadList(CTStreams, *it)));
    EXPECT_EQ("Chiller Duty, Expander Power, Compressor Power, Pump Power, Heater Duty",
              NamesOf(ReadList(CTHeatStreams, *it)));
    EXPECT_EQ("Stabiliser, T-100 Flowsheet, K-100 Curves", NamesOf(ReadList(CTFlowsheets, *it)));
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
        CTUnitOperations(it.Get(), &subclass, index);
        EXPECT_EQ(word, Variable(*it, "IsCompressor")) << NameAt(*it);
    }
}

TEST_F(SemanticCase, a_stream_has_a_row_for_each_component) {
    Open("demo");
    NodeRef it = Stream("Raw Gas");
    ASSERT_EQ(8, CTComponentArray(it.Get(), nullptr, kCountIndex));
    EXPECT_EQ(8, CTPhaseComponentArray(it.Get(), nullptr, kCountIndex));
    CTComponentArray(it.Get(), nullptr, 2);
    EXPECT_EQ("Methane 0.7500", RowAt(*it, CTComponent));
    EXPECT_EQ("Methane 0.7500", RowAt(*it, CTMoleFraction));
    // 0.75 * 16.0428 / 22.258
    EXPECT_EQ("Methane 0.5406", RowAt(*it, CTMassFraction));
    EXPECT_EQ("(none)", RowAt(*it, CTKVL2));

    CTPhaseComponentArray(it.Get(), nullptr, 2);
    EXPECT_EQ("(none)", RowAt(*it, CTPhaseMoleFraction));
    it->SetVarText("PhaseName", "Overall");
    EXPECT_EQ("Methane 0.7500", RowAt(*it, CTPhaseMoleFraction));
    it->SetVarText("PhaseName", "Solid Phase");
    EXPECT_EQ("(none)", RowAt(*it, CTPhaseMoleFraction));
}

TEST_F(SemanticCase, a_column_has_its_stages_and_leads_to_its_products) {
    Open("demo");
    NodeRef it = Flowsheet();
    FIValue subclass;
    CTUnitOperations(it.Get(), &subclass, 11);
    ASSERT_EQ("T-100", NameAt(*it));
    ASSERT_EQ(12, CTColumnStages(it.Get(), nullptr, kCountIndex));
    std::string kinds;
    for (int stage = 0; stage < 12; ++stage) {
        CTColumnStages(it.Get(), nullptr, stage);
        kinds += Variable(*it, "IsCondenser") == "INT 1"  ? 'C'
                 : Variable(*it, "IsReboiler") == "INT 1" ? 'R'
                 : Variable(*it, "IsFeed") == "INT 1"     ? 'F'
                                                          : '.';
    }
    EXPECT_EQ("C...F....F.R", kinds);
    for (const auto& [step, stream] :
         {std::pair{&CTCondDistillate, "Distillate"}, {&CTRebLiquid, "Bottoms"}}) {
        NodeRef at = NodeRef::Adopt(it->Copy());
        EXPECT_TRUE(step(at.Get(), 1)) << stream;
        EXPECT_EQ(stream, NameAt(*at));
        EXPECT_EQ("MaterialStreamObject", Read(*at, "type"));
    }
    EXPECT_FALSE(CTCondVapor(it.Get(), 0)) << "nothing leaves the condenser as vapour";
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
    CTUnitOperations(it.Get(), &subclass, 1);
    // It was drawn with 30 stages, the condenser and the reboiler among them.
    EXPECT_EQ("INT 29", Variable(*it, "Bottom"));
    EXPECT_EQ(
        "raw feed, hot utility, preheated feed, utility out, benzene product, toluene product",
        NamesOf(ReadList(CTStreams, *Flowsheet())));
    NodeRef feed = Stream("raw feed");
    CTComponentArray(feed.Get(), nullptr, 1);
    EXPECT_EQ("Toluene 0.5000", RowAt(*feed, CTMoleFraction));
}

}  // namespace

}  // namespace fixtop
