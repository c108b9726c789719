// SPDX-License-Identifier: Apache-2.0
// Recorded cases: a store keeps what was recorded and marks what is older than it; a store of what
// stands there already changes nothing, in any case.

#include <gtest/gtest.h>

#include <functional>

#include "case_builder.h"
#include "casehost/case_file.h"
#include "casehost/case_host.h"
#include "live/case.h"

namespace fixtop::casehost {
namespace {

using host::VarDescription;
using test::Object;
using test::Real;

constexpr auto kFound = VariableState::calculated;

// Feed -> Valve -> Low, and beside it a stream that depends on none of them.
CaseData Recording() {
    CaseData data = test::SmallCase();
    data.recorded = true;
    data.main.objects.push_back(
        Object("Mixer", words::kMixer,
               {Real("Default", "", 3, VariableState::defaulted), Real("Found", "", 4, kFound),
                Real("Open", "", kEmpty, VariableState::missing),
                test::Choice("Mode", {"on", "off"}, 1), test::TextVariable("Notes", "dry")}));
    data.main.objects.back().status = ObjectStatus::warning;
    data.main.objects.back().status_text = "careful";
    return data;
}

class Recorded : public ::testing::Test {
 protected:
    void Open(const CaseData& data) { open_ = host_.Open(data).opened; }
    Node& At(const std::string& path) { return *open_->FindByPath(path, nullptr); }
    const VarDescription& Variable(const std::string& path, const char* name) {
        return At(path).GetShape()->ByName(name)->description;
    }
    double Value(const std::string& path, const char* name) {
        return At(path).ReadReal(Variable(path, name));
    }
    void Store(const std::string& path, const char* name, double value) {
        At(path).View()->SetRealValue(Variable(path, name), value);
    }
    bool IsOutdated(const std::string& path, const char* name) {
        return At(path).IsOutdated(Variable(path, name));
    }
    int State(const std::string& path, const char* name) {
        host::ModifyState state = host::kSpecified;
        int detail = 0;
        host_.Services().GetVariableStatus(At(path).View(), Variable(path, name), state, detail);
        return state;
    }
    void StoreFraction(double value) {
        VarDescription address = Variable("Feed", names::kCompMoleFrac);
        address.SetOffset(0, 0, false);
        address.SetOffset(0, 1351, false);
        At("Feed").View()->SetRealValue(address, value);
    }
    std::string Text() { return CaseToText(open_->ToData()); }

    CaseHost host_;
    Case* open_ = nullptr;
};

TEST_F(Recorded, ResultsStayAfterAStoreAndAreMarked) {
    Open(Recording());
    Store("Feed", names::kTemperature, 40);
    EXPECT_EQ(Value("Feed", names::kTemperature), 40);
    EXPECT_EQ(Value("Hot", names::kTemperature), 60);
    EXPECT_EQ(State("Hot", names::kTemperature), host::kCalculated);
    EXPECT_TRUE(IsOutdated("Hot", names::kTemperature));
    EXPECT_FALSE(IsOutdated("Feed", names::kTemperature)) << "it was given";
    EXPECT_EQ(At("Hot").Condition(), ObjectStatus::not_solved);
    EXPECT_EQ(Value("Pumped", names::kTemperature), 20.5);
    EXPECT_FALSE(IsOutdated("Pumped", names::kTemperature)) << "it does not depend on the feed";
    EXPECT_EQ(At("Pumped").Condition(), ObjectStatus::ok);
}

TEST_F(Recorded, MarksAreSavedAndReadBack) {
    Open(Recording());
    Store("Feed", names::kTemperature, 40);
    Store("Mixer", "Default", 5);
    const std::string saved = Text();
    const ReadResult read = ReadCaseText("plant.json", saved);
    ASSERT_NE(read.data, nullptr);
    Open(*read.data);
    EXPECT_EQ(Value("Hot", names::kTemperature), 60);
    EXPECT_TRUE(IsOutdated("Hot", names::kTemperature));
    EXPECT_EQ(At("Hot").Condition(), ObjectStatus::not_solved);
    EXPECT_FALSE(IsOutdated("Pumped", names::kTemperature));
    EXPECT_EQ(At("Mixer").ResultCondition(), ObjectStatus::warning);
    EXPECT_EQ(At("Mixer").StatusText(), "careful");
    EXPECT_TRUE(IsOutdated("Mixer", "Found"));
    EXPECT_TRUE(open_->MainSolver()->NeedsToRun());
    EXPECT_EQ(Text(), saved);
}

TEST_F(Recorded, ResultsThatAreTakenOverClearTheMarks) {
    Open(Recording());
    Store("Feed", names::kTemperature, 40);
    CaseData results = open_->ToData();
    results.main.objects[5].variables[0].values[0].number = 72;
    results.main.objects[5].status = ObjectStatus::ok;
    ASSERT_TRUE(open_->ApplyResults(results));
    EXPECT_EQ(Value("Hot", names::kTemperature), 72);
    EXPECT_FALSE(IsOutdated("Hot", names::kTemperature));
    EXPECT_EQ(At("Hot").Condition(), ObjectStatus::ok);
    EXPECT_EQ(Text().find("\"stale\""), std::string::npos);
}

TEST_F(Recorded, MarkedResultsOfACaseThatCanBeComputedWaitForTheSolve) {
    CaseData data = Recording();
    data.recorded = false;
    data.main.objects[5].stale = true;
    Open(data);
    EXPECT_EQ(Value("Hot", names::kTemperature), kEmpty);
    EXPECT_EQ(State("Hot", names::kTemperature), host::kMissing);
    EXPECT_FALSE(IsOutdated("Hot", names::kTemperature)) << "nothing old is shown";
    EXPECT_TRUE(open_->MainSolver()->NeedsToRun());
}

TEST_F(Recorded, StoreOfWhatStandsThereChangesNothing) {
    for (const bool recorded : {true, false}) {
        CaseData data = Recording();
        data.recorded = recorded;
        Open(data);
        const std::string before = Text();
        Store("Feed", names::kTemperature, 25);
        Store("Mixer", "Default", 3);
        Store("Mixer", "Open", kEmpty);
        Store("Mixer", "Mode", 1);
        At("Mixer").View()->SetTextValue(Variable("Mixer", "Notes"), "dry");
        StoreFraction(0.75);
        EXPECT_EQ(Text(), before) << recorded;
        EXPECT_FALSE(At("Low").IsStale()) << recorded;
        EXPECT_FALSE(At("Mixer").IsStale()) << recorded;
        EXPECT_FALSE(open_->MainSolver()->NeedsToRun()) << recorded;
        open_->MainSolver()->SolveTask();
        EXPECT_FALSE(open_->MainSolver()->NeedsToRun()) << recorded;
    }
}

TEST_F(Recorded, StoreOfAnotherValueOfEachKindIsAChange) {
    const std::function<void()> stores[] = {
        [this] { Store("Mixer", "Default", 3.5); },
        [this] { Store("Mixer", "Default", kEmpty); },
        [this] { Store("Mixer", "Open", 0); },
        [this] { Store("Mixer", "Mode", 0); },
        [this] { At("Mixer").View()->SetTextValue(Variable("Mixer", "Notes"), "wet"); },
    };
    for (const auto& store : stores) {
        Open(Recording());
        const std::string before = Text();
        store();
        EXPECT_NE(Text(), before) << &store - stores;
        EXPECT_TRUE(At("Mixer").IsStale()) << &store - stores;
        EXPECT_TRUE(open_->MainSolver()->NeedsToRun()) << &store - stores;
    }
}

// Readers write twelve digits, and what they have read they may store.
TEST_F(Recorded, RoundingToTwelveDigitsMakesNoResultOlder) {
    CaseData data = Recording();
    data.main.objects[0].variables[0].values[0].number = 100.0 / 3;
    Open(data);
    Store("Feed", names::kTemperature, 33.3333333333);
    EXPECT_EQ(Value("Feed", names::kTemperature), 33.3333333333)
        << "it is read back as it was stored";
    EXPECT_FALSE(At("Hot").IsStale());
    Store("Feed", names::kTemperature, 33.33333333);
    EXPECT_TRUE(At("Hot").IsStale());
}

TEST_F(Recorded, NumberThatIsNotGivenYetIsGivenByItsStore) {
    CaseData data = Recording();
    data.main.objects[0].variables[0].values[0].state = VariableState::missing;
    Open(data);
    Store("Feed", names::kTemperature, 25);
    EXPECT_EQ(State("Feed", names::kTemperature), host::kSpecified);
    EXPECT_TRUE(At("Hot").IsStale());
}

TEST_F(Recorded, NegativeFractionIsRefused) {
    Open(Recording());
    const std::string before = Text();
    StoreFraction(-0.1);
    EXPECT_EQ(Text(), before);
    EXPECT_FALSE(At("Low").IsStale());
}

}  // namespace
}  // namespace fixtop::casehost
