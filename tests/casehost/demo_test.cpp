// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <set>

#include "casehost/case_file.h"
#include "casehost/standard_host.h"
#include "casehost/stream_names.h"
#include "casehost/unit_op_names.h"
#include "live/case.h"

namespace fixtop::casehost {
namespace {

class Demo : public ::testing::Test {
 protected:
    void SetUp() override {
        UseStandardParts(host_);
        const OpenResult result = OpenCase(host_, "demo");
        ASSERT_TRUE(result);
        for (const CaseProblem& problem : result.problems) ADD_FAILURE() << problem.Text();
        demo_ = result.opened;
    }
    double Value(const std::string& path, const char* name, int index = 0) {
        Node* node = demo_->FindByPath(path, nullptr);
        const Row* row = node ? node->GetShape()->ByName(name) : nullptr;
        if (!row) {
            ADD_FAILURE() << path << ": no " << name;
            return kEmpty;
        }
        host::VarDescription description = row->description;
        if (!row->spec->dimensions.empty()) description.SetOffset(0, index, false);
        return node->ReadReal(description);
    }

    CaseHost host_;
    Case* demo_ = nullptr;
};

TEST_F(Demo, EveryObjectIsSolved) {
    EXPECT_FALSE(demo_->MainSolver()->NeedsToRun());
    std::function<void(host::FlowSheet*)> check = [&](host::FlowSheet* sheet) {
        host::FlowSheetObjectIterator objects = sheet->Objects();
        for (host::Viewable* each = objects.Reset(); each; each = objects.Next()) {
            const int status = each->GetMyStatusCondition();
            EXPECT_TRUE(status == host::Viewable::kOk || status == host::Viewable::kWarning)
                << each->GetName().Str() << ": " << Node::Of(each)->StatusText();
            if (each->SubFlowSheet()) check(each->SubFlowSheet());
        }
    };
    check(demo_->MainFlowSheet());
}

TEST_F(Demo, EveryCalculatedScalarOfEveryObjectHasAValue) {
    std::function<void(const std::vector<ObjectData>&)> check =
        [&](const std::vector<ObjectData>& objects) {
            for (const ObjectData& object : objects) {
                for (const VariableData& variable : object.variables) {
                    if (variable.spec->kind != ValueKind::real ||
                        !variable.spec->dimensions.empty())
                        continue;
                    EXPECT_NE(variable.values[0].number, kEmpty)
                        << object.name << ": " << variable.spec->name;
                }
                if (object.sub_flowsheet) check(object.sub_flowsheet->objects);
            }
        };
    check(demo_->ToData().main.objects);
}

TEST_F(Demo, MassComesOutAsItGoesIn) {
    const double in = Value("Raw Gas", names::kMassFlow) + Value("Tail Gas", names::kMassFlow);
    double out = 0;
    for (const char* name :
         {"Sales Gas", "Fuel Gas", "Cooled Gas", "Stabiliser Gas", "Stable Condensate"}) {
        out += Value(name, names::kMassFlow);
    }
    EXPECT_GT(in, 0);
    EXPECT_NEAR(out, in, 1e-6 * in);
}

TEST_F(Demo, EnergyComesOutAsItGoesIn) {
    double balance = 0;
    for (const char* name : {"Raw Gas", "Tail Gas", "Compressor Power", "Pump Power", "Heater Duty",
                             "Stabiliser/Reheat"}) {
        balance += Value(name, names::kHeatFlow);
    }
    for (const char* name : {"Sales Gas", "Fuel Gas", "Cooled Gas", "Stabiliser Gas",
                             "Stable Condensate", "Chiller Duty", "Expander Power"}) {
        balance -= Value(name, names::kHeatFlow);
    }
    EXPECT_NEAR(balance, 0, 1e-5 * std::abs(Value("Chiller Duty", names::kHeatFlow)));
}

TEST_F(Demo, FeedStoreIsSolvedAgain) {
    const double before = Value("Sales Gas", names::kMolarFlow);
    Node* feed = demo_->FindByPath("Raw Gas", nullptr);
    feed->StoreReal(feed->GetShape()->ByName(names::kMolarFlow)->description, 2000);
    EXPECT_EQ(Value("Sales Gas", names::kMolarFlow), kEmpty);
    demo_->MainSolver()->SolveTask();
    for (int turn = 0;
         turn < 100 && (demo_->MainSolver()->Pending() || demo_->MainSolver()->Busy()); ++turn) {
        host_.Services().WaitForTurn(0);
    }
    EXPECT_FALSE(demo_->MainSolver()->NeedsToRun()) << demo_->Solver().Message();
    EXPECT_GT(Value("Sales Gas", names::kMolarFlow), 1.5 * before);
}

TEST_F(Demo, BasisHasElementsOfEveryKind) {
    std::set<BasisElement::Kind> kinds;
    bool has_value = false;
    bool has_none = false;
    std::function<void(const std::vector<BasisElement>&)> collect =
        [&](const std::vector<BasisElement>& elements) {
            for (const BasisElement& each : elements) {
                kinds.insert(each.kind);
                const bool variable = each.kind == BasisElement::Kind::variable;
                has_value = has_value || (variable && each.number != kEmpty);
                has_none = has_none || (variable && each.number == kEmpty);
                collect(each.elements);
            }
        };
    collect(demo_->ToData().basis);
    EXPECT_EQ(kinds.size(), 9u);
    EXPECT_TRUE(has_value);
    EXPECT_TRUE(has_none);
}

TEST_F(Demo, ColumnIsInBalance) {
    const std::string inside = "T-100 Flowsheet/";
    const std::string feeds[] = {"Column Feed", "Heavy Feed"};
    const std::string products[] = {"Distillate", "Bottoms", "Butane Cut", "Side Cut"};
    for (const char* flow : {names::kMolarFlow, names::kMassFlow}) {
        double in = 0, out = 0;
        for (const std::string& feed : feeds) in += Value(feed, flow);
        for (const std::string& product : products) out += Value(product, flow);
        EXPECT_NEAR(out, in, 1e-9 * in) << flow;
    }
    double heat = Value("T-100", "Reboiler Duty") - Value("T-100", "Condenser Duty") -
                  Value(inside + "PA-1", names::kDuty) +
                  Value(inside + "Side Stripper", names::kDuty) -
                  Value(inside + "Side Rectifier", names::kDuty);
    for (const std::string& feed : feeds) heat += Value(feed, names::kHeatFlow);
    for (const std::string& product : products) heat -= Value(product, names::kHeatFlow);
    EXPECT_NEAR(heat, 0, 1e-6 * Value("T-100", "Reboiler Duty"));
    EXPECT_NEAR(Value(inside + "Condenser", "Distillate Mass Flow"),
                Value("Distillate", names::kMassFlow), 1e-6);
    EXPECT_NEAR(Value(inside + "Reboiler", "Liquid Mass Flow"), Value("Bottoms", names::kMassFlow),
                1e-6);
}

// u = h - p v, g = h - T s, a = u - T s, and by mass each over the molar mass.
TEST_F(Demo, PotentialsFollowFromEnthalpyAndEntropy) {
    const auto of = [&](const std::string& name) { return Value("Chilled Gas", name.c_str()); };
    const double kelvin = of(names::kTemperature) + 273.15, mass = of(names::kMolarMass);
    const double energy = of(names::kMolarEnthalpy) - of(names::kPressure) * of("Molar Volume");
    const double heat = kelvin * of(names::kMolarEntropy);
    EXPECT_NEAR(of("Molar Volume") * of(names::kMassDensity), mass, 1e-9);
    EXPECT_NEAR(of("Molar Internal Energy"), energy, 1e-6);
    EXPECT_NEAR(of("Molar Gibbs Energy"), of(names::kMolarEnthalpy) - heat, 1e-6);
    EXPECT_NEAR(of("Molar Helmholtz Energy"), energy - heat, 1e-6);
    for (const std::string name : {"Enthalpy", "Entropy", "Internal Energy", "Gibbs Energy",
                                   "Heat Capacity", "Helmholtz Energy"}) {
        EXPECT_NEAR(of("Mass " + name) * mass, of("Molar " + name), 1e-6) << name;
    }
    // 1 kgmole at 15 C and 101.325 kPa: 23.6448 m3.
    EXPECT_NEAR(of("Std Vapour Volume Flow") / of(names::kMolarFlow), 23.6448, 1e-4);
}

TEST_F(Demo, PhasesAddUpToTheStream) {
    const auto of = [&](const char* name, int index = 0) {
        return Value("Chilled Gas", name, index);
    };
    enum { kOverall, kVapour, kLiquid, kTotalLiquid };
    for (const char* name : {"Phase Molar Flow", "Phase Mass Flow", "Phase Mass Fraction",
                             "Phase Actual Volume Flow", "Phase Volume Fraction"}) {
        EXPECT_NEAR(of(name, kVapour) + of(name, kLiquid), of(name), 1e-9 * of(name)) << name;
        EXPECT_EQ(of(name, kLiquid), of(name, kTotalLiquid)) << name;
        EXPECT_GT(of(name, kVapour), 0) << name;
    }
    EXPECT_EQ(of("Phase Molar Flow"), of(names::kMolarFlow));
    EXPECT_NEAR(of("Phase Mass Flow"), of(names::kMassFlow), 1e-9 * of(names::kMassFlow));
    EXPECT_EQ(of("Phase Mass Fraction"), 1);
    EXPECT_EQ(of("Phase Volume Fraction"), 1);
    EXPECT_NEAR(of("Phase Molar Flow", kVapour), of(names::kMolarFlow) * of(names::kVapourFraction),
                1e-9);
    for (const int phase : {kOverall, kVapour, kLiquid}) {
        EXPECT_NEAR(of("Phase Mass Flow", phase),
                    of("Phase Molar Flow", phase) * of("Phase Molecular Weight", phase), 1e-6);
    }
    double moles = 0, mass = 0;
    for (int component = 0; component < 8; ++component) {
        moles += of("Comp Molar Flow", component);
        mass += of("Comp Mass Flow", component);
    }
    EXPECT_NEAR(moles, of(names::kMolarFlow), 1e-9);
    EXPECT_NEAR(mass, of(names::kMassFlow), 1e-6);
}

TEST_F(Demo, EveryStageOfTheColumnIsInBalance) {
    constexpr int kBottom = 11;
    const auto at = [&](const char* profile, int stage) {
        const double value = Value("T-100 Flowsheet/Profiles", profile, stage);
        return value == kEmpty ? 0 : value;
    };
    for (int stage = 0; stage <= kBottom; ++stage) {
        double in = at("Stage Net Molar Feed", stage);
        if (stage > 0) in += at("Stage Liquid Molar Flow", stage - 1);
        if (stage < kBottom) in += at("Stage Vapour Molar Flow", stage + 1);
        double out = at("Stage Vapour Molar Flow", stage) + at("Stage Net Molar Draw", stage);
        // What leaves the reboiler as liquid is the product that is drawn from it.
        if (stage < kBottom) out += at("Stage Liquid Molar Flow", stage);
        EXPECT_NEAR(out, in, 1e-6) << stage;
        if (stage == 0) continue;
        for (const char* rising : {"Stage Temperature", "Stage Pressure"}) {
            EXPECT_GT(at(rising, stage), at(rising, stage - 1)) << rising << ' ' << stage;
        }
    }
    EXPECT_EQ(Value("T-100 Flowsheet/Profiles", "Stage Net Molar Feed", 4), 100);
    EXPECT_EQ(Value("T-100 Flowsheet/Profiles", "Stage Net Molar Feed", 3), kEmpty);
}

TEST_F(Demo, HasEquipmentOfEveryKind) {
    std::set<std::string> types;
    std::function<void(const std::vector<ObjectData>&)> collect =
        [&](const std::vector<ObjectData>& objects) {
            for (const ObjectData& each : objects) {
                types.insert(each.type);
                if (each.sub_flowsheet) collect(each.sub_flowsheet->objects);
            }
        };
    collect(demo_->ToData().main.objects);
    for (const char* type : {words::kMaterialStream,
                             words::kEnergyStream,
                             words::kPipe,
                             words::kCompressor,
                             words::kExpander,
                             words::kSeparator,
                             words::kValve,
                             words::kPump,
                             words::kHeatExchanger,
                             words::kMixer,
                             words::kTee,
                             words::kDistillation,
                             words::kConversionReactor,
                             words::kEquilibriumReactor,
                             words::kGibbsReactor,
                             words::kHeater,
                             words::kCooler,
                             words::kTemplate,
                             "HovexCorrelationObject",
                             "TraySectionObject",
                             "BPReboilerObject"}) {
        EXPECT_EQ(types.count(type), 1u) << type;
    }
}

TEST_F(Demo, IsACaseFileLikeAnyOther) {
    const std::string text = CaseToText(demo_->ToData());
    const ReadResult back = ReadCaseText("demo.json", text);
    for (const CaseProblem& problem : back.problems) ADD_FAILURE() << problem.Text();
    ASSERT_NE(back.data, nullptr);
    EXPECT_EQ(CaseToText(*back.data), text);
}

}  // namespace
}  // namespace fixtop::casehost
