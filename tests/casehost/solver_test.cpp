// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "case_builder.h"
#include "casehost/case_host.h"
#include "live/case.h"
#include "support/host_script.h"

namespace fixtop::casehost {
namespace {

using test::SmallCase;

// Sets every calculated value of the flowsheet to a number that tells how often it was asked.
class CountingEngine final : public SolveEngine {
 public:
    Outcome Prepare(const CaseData& problem) override {
        ++prepared;
        results_ = problem;
        return {Progress::running, ""};
    }
    Outcome Step(int turn) override {
        steps.push_back(turn);
        if (turn + 1 < turns_needed) return {Progress::running, ""};
        for (ObjectData& object : results_.main.objects) {
            object.status = ObjectStatus::ok;
            for (VariableData& variable : object.variables) {
                for (ValueData& value : variable.values) {
                    if (value.state == VariableState::calculated) value.number = 100 + prepared;
                }
            }
        }
        return {fail ? Progress::failed : Progress::done, fail ? "does not converge" : ""};
    }
    const CaseData& Results() const override { return results_; }

    int prepared = 0;
    int turns_needed = 1;
    bool fail = false;
    std::vector<int> steps;

 private:
    CaseData results_;
};

class RecordingCallback final : public host::IModelCallback {
 public:
    explicit RecordingCallback(host::FlowSheetSolver* solver) : solver_(solver) {}
    long QueryInterface(const void*, void**) override { return -1; }
    unsigned long AddRef() override { return ++references; }
    unsigned long Release() override { return --references; }
    void SimulationStarted() override { log += "started "; }
    void SimulationStopped() override { log += "stopped "; }
    void SimulationStep() override { log += solver_->Finished() ? "finished " : "step "; }
    void SimulationEvent() override { log += "event "; }

    unsigned long references = 0;
    std::string log;

 private:
    host::FlowSheetSolver* solver_;
};

class Solving : public ::testing::Test {
 protected:
    Case& Open(CaseData data) {
        open_ = host_.Open(data).opened;
        auto engine = std::make_unique<CountingEngine>();
        engine_ = engine.get();
        open_->SetEngine(script_->Around(std::move(engine)));
        callback_ = std::make_unique<RecordingCallback>(open_->MainSolver());
        if (open_->OnlineManager()) open_->OnlineManager()->put_ModelCallback(callback_.get());
        return *open_;
    }
    ~Solving() override {
        if (open_ && open_->OnlineManager()) open_->OnlineManager()->put_ModelCallback(nullptr);
    }
    host::Viewable* Get(const std::string& name) {
        return open_->FindByPath(name, nullptr)->View();
    }
    host::VarDescription Temperature(const std::string& name) {
        return Node::Of(Get(name))->GetShape()->ByName("Temperature")->description;
    }
    void Store(double value) { Get("Feed")->SetRealValue(Temperature("Feed"), value); }
    double Hot() { return Get("Hot")->GetRealValue(Temperature("Hot")); }
    host::FlowSheetSolver& Solver() { return *open_->MainSolver(); }
    void Turns(int count) {
        for (int i = 0; i < count; ++i) host_.Services().WaitForTurn(0);
    }

    CaseHost host_;
    std::shared_ptr<HostScript> script_ = HostScript::Over(host_);
    Case* open_ = nullptr;
    CountingEngine* engine_ = nullptr;
    std::unique_ptr<RecordingCallback> callback_;
};

TEST_F(Solving, SolveIsQueuedBeginsRunsAndEnds) {
    Open(SmallCase());
    EXPECT_FALSE(Solver().NeedsToRun());
    Store(40);
    EXPECT_TRUE(Solver().NeedsToRun());
    EXPECT_EQ(Hot(), host::kEmptyReal);
    Solver().SolveTask();
    EXPECT_TRUE(Solver().Pending());
    EXPECT_FALSE(Solver().IsSolving());
    Turns(1);
    EXPECT_FALSE(Solver().Pending());
    EXPECT_TRUE(Solver().IsSolving());
    EXPECT_TRUE(Solver().Busy());
    EXPECT_EQ(Solver().GetRealValue(host::VarDescription(":Boolean.302", 0)), 0.0);
    Turns(2);
    EXPECT_TRUE(Solver().IsSolving()) << "one solve takes three turns";
    Turns(1);
    EXPECT_FALSE(Solver().IsSolving());
    EXPECT_FALSE(Solver().Busy());
    EXPECT_TRUE(Solver().Finished());
    EXPECT_FALSE(Solver().NeedsToRun());
    EXPECT_EQ(Solver().GetRealValue(host::VarDescription(":Boolean.302", 0)), 1.0);
    EXPECT_EQ(Hot(), 101);
    EXPECT_EQ(Get("Hot")->GetMyStatusCondition(), host::Viewable::kOk);
    EXPECT_EQ(callback_->log, "step started step step finished stopped ");
    EXPECT_EQ(engine_->steps, std::vector<int>{0});
    Turns(1);
    EXPECT_FALSE(Solver().Finished());
}

TEST_F(Solving, EngineMayTakeMoreTurnsThanTheCaseAsksFor) {
    Open(SmallCase());
    engine_->turns_needed = 5;
    Store(40);
    Solver().SolveTask();
    Turns(1 + 4);
    EXPECT_TRUE(Solver().IsSolving());
    Turns(1);
    EXPECT_FALSE(Solver().IsSolving());
    EXPECT_EQ(engine_->steps, (std::vector<int>{0, 1, 2, 3, 4}));
}

TEST_F(Solving, HoldingSolverStartsNothingAndGivesUpWhatRuns) {
    Open(SmallCase());
    EXPECT_FALSE(Solver().IsHolding());
    Solver().Holding(true);
    EXPECT_TRUE(Solver().IsHolding());
    EXPECT_EQ(Solver().GetRealValue(host::VarDescription(":Boolean.300", 0)), 1.0);
    Store(40);
    Solver().SolveTask();
    Turns(10);
    EXPECT_FALSE(Solver().Pending());
    EXPECT_TRUE(Solver().NeedsToRun());
    EXPECT_EQ(engine_->prepared, 0);
    Solver().Holding(false);
    EXPECT_FALSE(Solver().IsHolding());
    EXPECT_EQ(Solver().GetRealValue(host::VarDescription(":Boolean.300", 0)), 0.0);
    Solver().SolveTask();
    Turns(2);
    Solver().Holding(true);
    Turns(1);
    EXPECT_FALSE(Solver().IsSolving());
    EXPECT_TRUE(Solver().NeedsToRun());
}

TEST_F(Solving, StoreDuringASolveBeginsItAnew) {
    Open(SmallCase());
    Store(40);
    Solver().SolveTask();
    Turns(3);
    Store(50);
    Turns(2);
    EXPECT_TRUE(Solver().IsSolving());
    Turns(1);
    EXPECT_FALSE(Solver().IsSolving());
    EXPECT_EQ(engine_->prepared, 2);
    EXPECT_EQ(Hot(), 102);
}

TEST_F(Solving, SolveOnceBlocksUntilTheEnd) {
    Open(SmallCase());
    Store(40);
    Solver().SolveOnce();
    EXPECT_FALSE(Solver().NeedsToRun());
    EXPECT_EQ(Hot(), 101);
}

TEST_F(Solving, FailedSolveIsToldAndStillNeedsToRun) {
    Open(SmallCase());
    engine_->fail = true;
    Store(40);
    Solver().SolveOnce();
    EXPECT_TRUE(Solver().NeedsToRun());
    EXPECT_EQ(open_->Solver().Message(), "does not converge");
    EXPECT_NE(Solver().GetTextValue(host::VarDescription("ConsistencyVariable", 0)).Str(),
              "Unknown.0");
    engine_->fail = false;
    Solver().SolveOnce();
    EXPECT_EQ(Solver().GetTextValue(host::VarDescription("ConsistencyVariable", 0)).Str(),
              "Unknown.0");
}

TEST_F(Solving, CaseWithoutEngineStaysUnsolved) {
    Open(SmallCase());
    open_->SetEngine(nullptr);
    Store(40);
    Solver().SolveOnce();
    EXPECT_TRUE(Solver().NeedsToRun());
    EXPECT_EQ(Hot(), host::kEmptyReal);
    EXPECT_EQ(Get("Hot")->GetMyStatusCondition(), host::Viewable::kNotSolved);
}

TEST_F(Solving, RecordedCaseKeepsItsResultsAndIsNotSolved) {
    CaseData data = SmallCase();
    data.recorded = true;
    Open(data);
    Store(40);
    EXPECT_EQ(Get("Feed")->GetRealValue(Temperature("Feed")), 40);
    Solver().SolveTask();
    EXPECT_FALSE(Solver().IsSolving());
    EXPECT_FALSE(Solver().Pending());
    EXPECT_TRUE(Solver().Finished());
    EXPECT_TRUE(Solver().NeedsToRun());
    Turns(5);
    EXPECT_TRUE(Solver().NeedsToRun());
    EXPECT_FALSE(Solver().Busy());
    EXPECT_EQ(engine_->prepared, 0);
    EXPECT_EQ(Hot(), 60);
    EXPECT_EQ(Get("Hot")->GetMyStatusCondition(), host::Viewable::kNotSolved);
    EXPECT_EQ(callback_->log, "finished finished stopped ") << "the change and the end are told";
}

TEST_F(Solving, UnchangedRecordingHasNothingToSolveButRefusesToBeSolvedAtOnce) {
    CaseData data = SmallCase();
    data.recorded = true;
    Open(data);
    Solver().SolveTask();
    Turns(2);
    EXPECT_FALSE(Solver().NeedsToRun());
    EXPECT_EQ(open_->Solver().Message(), "");
    Solver().SolveOnce();
    EXPECT_TRUE(Solver().NeedsToRun());
    EXPECT_EQ(open_->Solver().Message(), "the case is a recording and can't be computed again");
}

TEST_F(Solving, StopEndsASolveThatNeverFinishes) {
    Open(SmallCase());
    script_->NeverFinishSolve(true);
    Store(40);
    Solver().SolveTask();
    Turns(50);
    EXPECT_TRUE(Solver().IsSolving());
    EXPECT_TRUE(Solver().Busy());
    open_->Solver().RequestStop();
    EXPECT_TRUE(Solver().Stop());
    Turns(1);
    EXPECT_FALSE(Solver().IsSolving());
    EXPECT_TRUE(Solver().Stop());
    EXPECT_TRUE(Solver().NeedsToRun());
    script_->NeverFinishSolve(false);
    Solver().SolveTask();
    EXPECT_FALSE(Solver().Stop());
}

TEST_F(Solving, StopButtonEndsASolveAtItsNextTurnWhoeverWaitsForIt) {
    bool pressed = false;
    int asked = 0;
    host_.SetStopButton([&] { return ++asked, pressed; });
    Open(SmallCase());
    script_->NeverFinishSolve(true);
    Store(40);
    Turns(3);
    EXPECT_EQ(asked, 0) << "nothing is solved";
    Solver().SolveTask();
    Turns(5);
    EXPECT_TRUE(Solver().IsSolving());
    pressed = true;
    Turns(1);
    EXPECT_FALSE(Solver().IsSolving());
    EXPECT_TRUE(Solver().Stop()) << "as whoever waits for the solve has to see";
    EXPECT_TRUE(Solver().Finished());
    EXPECT_TRUE(Solver().NeedsToRun());
    EXPECT_EQ(open_->Solver().Message(), "the solve was stopped");
    Solver().SolveOnce();
    EXPECT_FALSE(Solver().IsSolving()) << "a blocking pass ends too";
    EXPECT_EQ(open_->Solver().Message(), "the solve was stopped");
    pressed = false;
    script_->NeverFinishSolve(false);
    Solver().SolveOnce();
    EXPECT_FALSE(Solver().NeedsToRun());
}

TEST_F(Solving, StopButtonEndsASolveThatHasNotBegun) {
    bool pressed = true;
    host_.SetStopButton([&] { return pressed; });
    Open(SmallCase());
    Store(40);
    Solver().SolveTask();
    EXPECT_TRUE(Solver().Pending());
    Turns(1);
    EXPECT_FALSE(Solver().Pending());
    EXPECT_TRUE(Solver().Stop());
    EXPECT_EQ(engine_->prepared, 0);
}

TEST_F(Solving, PauseRequestIsTheUsers) {
    Open(SmallCase());
    EXPECT_FALSE(Solver().PauseRequested());
    open_->Solver().RequestPause(true);
    EXPECT_TRUE(Solver().PauseRequested());
    Solver().Holding(true);
    EXPECT_FALSE(Solver().PauseRequested());
}

TEST_F(Solving, ScriptRefusesStores) {
    Open(SmallCase());
    script_->RefuseStore(2);
    Store(40);
    Store(50);
    EXPECT_EQ(Get("Feed")->GetRealValue(Temperature("Feed")), 40);
    Store(60);
    EXPECT_EQ(Get("Feed")->GetRealValue(Temperature("Feed")), 60);
    script_->RefuseStore(0);
    Store(70);
    EXPECT_EQ(Get("Feed")->GetRealValue(Temperature("Feed")), 60);
    script_->RefuseStore(-1);
    Store(80);
    EXPECT_EQ(Get("Feed")->GetRealValue(Temperature("Feed")), 80);
}

TEST_F(Solving, ScriptCallsBackInTheMiddleOfAStore) {
    Open(SmallCase());
    double seen = 0;
    script_->InStore(1, [&] {
        seen = Get("Feed")->GetRealValue(Temperature("Feed"));
        open_->Notify(&host::IModelCallback::SimulationStep);
    });
    Store(40);
    EXPECT_EQ(seen, 25);
    EXPECT_EQ(callback_->log, "step ");
}

TEST_F(Solving, ScriptDeletesTheObjectUnderAStore) {
    Open(SmallCase());
    host::Viewable* feed = Get("Feed");
    const host::VarDescription temperature = Temperature("Feed");
    script_->InStore(1, [&] { open_->Delete(feed); });
    feed->SetRealValue(temperature, 40);
    EXPECT_EQ(feed->GetRealValue(temperature), 25);
    EXPECT_EQ(open_->FindByPath("Feed", nullptr), nullptr);
}

TEST_F(Solving, ScriptDeletesAtATurn) {
    Open(SmallCase());
    script_->AtTurn(2, [&] { open_->Delete(Get("Other")); });
    Turns(1);
    EXPECT_NE(open_->FindByPath("Other", nullptr), nullptr);
    Turns(1);
    EXPECT_EQ(open_->FindByPath("Other", nullptr), nullptr);
    EXPECT_EQ(callback_->log, "step ");
}

TEST_F(Solving, ScriptFailsSolves) {
    Open(SmallCase());
    script_->FailSolve("the licence ran out");
    Store(40);
    Solver().SolveOnce();
    EXPECT_EQ(open_->Solver().Message(), "the licence ran out");
    EXPECT_TRUE(Solver().NeedsToRun());
}

TEST_F(Solving, PostedEventsRunInTheNextTurn) {
    Open(SmallCase());
    int ran = 0;
    host_.Post([&] { ++ran; });
    EXPECT_EQ(ran, 0);
    Turns(2);
    EXPECT_EQ(ran, 1);
}

TEST_F(Solving, ClosingTellsTheCallbackAndReleasesIt) {
    Open(SmallCase());
    EXPECT_EQ(callback_->references, 1u);
    host::Viewable* feed = Get("Feed");
    Case* closing = open_;
    open_ = nullptr;
    host_.Close(*closing);
    EXPECT_EQ(callback_->log, "event ");
    EXPECT_EQ(callback_->references, 0u);
    EXPECT_EQ(feed->GetName().Str(), "Feed") << "readable until the host's loop";
    EXPECT_EQ(host_.ActiveCase(), nullptr);
    host_.RunHostLoop();
    EXPECT_TRUE(host_.Cases().empty());
}

}  // namespace
}  // namespace fixtop::casehost
