// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "host/adapter.h"
#include "host/solver/solve_wait.h"
#include "host/solver/solver.h"
#include "support/host_reading.h"
#include "support/scripted_host.h"

namespace fixtop {

namespace {

std::string Text(const FIErrorList& errors) {
    std::string text;
    for (const FIErrorRecord& each : errors) {
        text.append(std::to_string(each.code)).append(",");
        text.append(std::to_string(each.first)).append(",");
        text.append(std::to_string(each.second))
            .append(" ")
            .append(each.text.ToText())
            .append("; ");
    }
    return text;
}

// Writes down what a solver tells.
struct Listener {
    std::string told;
    std::function<void()> action;

    static void Hear(void* owner, int kind, const FIErrorList* report) {
        auto* self = static_cast<Listener*>(owner);
        self->told.append(std::to_string(kind));
        if (report) self->told.append("(").append(Text(*report)).append(")");
        self->told.append(" ");
        if (self->action) self->action();
    }
};

int g_raw_changes = 0;
int g_raw_deletions = 0;
void Raw(int event) {
    ++(event == 0 ? g_raw_changes : g_raw_deletions);
}

// A callback of somebody else that stood installed before.
class Foreign final : public host::IModelCallback {
 public:
    long QueryInterface(const void*, void**) override { return -1; }
    unsigned long AddRef() override { return ++references; }
    unsigned long Release() override { return --references; }
    void SimulationStarted() override { calls += "started "; }
    void SimulationStopped() override { calls += "stopped "; }
    void SimulationStep() override { calls += "step "; }
    void SimulationEvent() override { calls += "event "; }
    virtual ~Foreign() = default;
    unsigned long references = 1;
    std::string calls;
};

class Solvers : public testing::Test {
 protected:
    Solvers() { g_raw_changes = g_raw_deletions = 0; }
    ~Solvers() override { TheAdapter().SetWaitsForSolve(true); }

    std::string Set(FISolver& which, const char* name, const FIValue& value) {
        FIValue out("left over");
        which.SetAttribute(FIValue(name), value, out);
        return Shown(out);
    }

    scripted::Host host;
    HSSSolver solver{nullptr};
    HDynamicSolver dynamic{nullptr};
};

TEST_F(Solvers, attributes_are_those_of_the_tables) {
    EXPECT_EQ(
        std::vector<std::string>({"id", "type", "autosolve", "state", "active", "wait_for_solve"}),
        ShownRows(*solver.GetAttributeSource()));
    EXPECT_EQ("Solver", Read(solver, "id"));
    EXPECT_EQ("HSSSolver", Read(solver, "type"));
    EXPECT_EQ("INT 0", Read(solver, "autosolve"));
    host.solver.holding = false;
    EXPECT_EQ("INT 1", Read(solver, "autosolve"));
    EXPECT_EQ("stopped", Read(solver, "state"));
    EXPECT_EQ("true", Read(solver, "active"));
    host.simulation_case.active_solver = nullptr;
    EXPECT_EQ("false", Read(solver, "active"));
    EXPECT_EQ("INT 1", Read(solver, "wait_for_solve"));
    EXPECT_EQ("(NULL)", Read(solver, "value"));

    EXPECT_EQ(std::vector<std::string>({"id", "type"}), ShownRows(*dynamic.GetAttributeSource()));
    EXPECT_EQ("Solver", Read(dynamic, "id"));
    EXPECT_EQ("HDynamicSolver", Read(dynamic, "type"));
    TestVarSet vars;
    for (FISolver* each : {static_cast<FISolver*>(&solver), static_cast<FISolver*>(&dynamic)}) {
        EXPECT_EQ(nullptr, each->GetVarSet());
        each->SetVarSet(&vars);
        EXPECT_EQ(&vars, each->GetVarSet());
    }
}

TEST_F(Solvers, run_states_have_texts) {
    auto notify = HSolverNotify::ForCase(&host.simulation_case);
    const std::pair<int, const char*> cases[] = {
        {0, "stopped"}, {1, "running"}, {2, "paused"}, {3, "(NULL)"}, {-1, "(NULL)"}};
    for (const auto& [state, text] : cases) {
        notify->ChangeState(static_cast<HSolverNotify::RunState>(state));
        EXPECT_EQ(text, Read(solver, "state")) << state;
    }
    notify->ChangeState(HSolverNotify::kStopped);
}

TEST_F(Solvers, the_dynamic_solver_shows_itself_alone) {
    FIErrorList errors;
    EXPECT_EQ(4, dynamic.Kind());
    EXPECT_EQ(static_cast<host::FlowSheetSolver*>(&host.solver), dynamic.CheckSolve(errors));
    EXPECT_EQ("", Text(errors));
    dynamic.Initialize();
    dynamic.SolveOnceNow(errors);
    dynamic.Options(errors);
    EXPECT_EQ("-1,0,0 Not Supported; -1,0,0 Not Supported; ", Text(errors));
    EXPECT_FALSE(dynamic.Run());
    dynamic.Pause();
    dynamic.Resume();
    dynamic.Stop();
    EXPECT_FALSE(dynamic.Subscribe(this, 0, Listener::Hear));
    EXPECT_FALSE(dynamic.Unsubscribe(this, 0));
    EXPECT_EQ("Not Supported", Set(dynamic, "autosolve", FIValue::OfInt(1)));
    EXPECT_EQ("", host.solver.calls);
}

TEST_F(Solvers, fixed_answers_are_as_told) {
    for (FISolver* each : {static_cast<FISolver*>(&solver), static_cast<FISolver*>(&dynamic)}) {
        EXPECT_FALSE(each->Reserved6());
        each->Reserved11();
        EXPECT_EQ(0.0, each->Reserved12());
        EXPECT_EQ(nullptr, each->Reserved13());
        EXPECT_EQ(nullptr, each->Reserved14());
        EXPECT_FALSE(each->Reserved15());
    }
    FIErrorList errors;
    solver.Options(errors);
    EXPECT_EQ("-1,0,0 Not Supported; ", Text(errors));
    EXPECT_EQ(1, solver.Kind());
}

TEST_F(Solvers, checks_add_a_record_each) {
    FIErrorList errors;
    EXPECT_EQ(nullptr, solver.CheckSolve(errors));
    EXPECT_EQ("", Text(errors));
    host.simulation_case.case_dynamic = true;
    host.solver.holding = false;
    host.solver.needs_to_run = false;
    solver.CheckSolve(errors);
    EXPECT_EQ(
        "2,0,0 Simulation is in dynamics mode; 2,0,0 Solver is already active; "
        "2,0,0 Solver is complete; ",
        Text(errors));
}

TEST_F(Solvers, each_check_stands_for_itself) {
    struct Case {
        bool dynamic;
        bool case_dynamic;
        bool holding;
        bool needs_to_run;
        const char* answer;
    };
    const Case cases[] = {
        {true, false, true, true, "2,0,0 Simulation is in dynamics mode; "},
        {false, true, true, true, "2,0,0 Simulation is in dynamics mode; "},
        {false, false, false, true, "2,0,0 Solver is already active; "},
        {false, false, true, false, "2,0,0 Solver is complete; "},
    };
    for (const Case& each : cases) {
        host.simulation_case.dynamic = each.dynamic;
        host.simulation_case.case_dynamic = each.case_dynamic;
        host.solver.holding = each.holding;
        host.solver.needs_to_run = each.needs_to_run;
        FIErrorList errors;
        solver.CheckSolve(errors);
        EXPECT_EQ(each.answer, Text(errors));
    }
}

TEST_F(Solvers, one_pass_releases_solves_and_holds) {
    FIErrorList errors;
    solver.SolveOnceNow(errors);
    EXPECT_EQ("release once hold ", host.solver.calls);
    host.solver.needs_to_run = false;
    solver.SolveOnceNow(errors);
    EXPECT_EQ("2,0,0 Solve did not complete; 4,0,0 Solve is complete; ", Text(errors));
}

TEST_F(Solvers, run_needs_a_holding_solver_with_work_in_steady_state) {
    Listener listener;
    ASSERT_TRUE(solver.Subscribe(&listener, 3, Listener::Hear));
    host.simulation_case.dynamic = true;
    EXPECT_FALSE(solver.Run());
    host.simulation_case.dynamic = false;
    host.solver.holding = false;
    EXPECT_FALSE(solver.Run());
    host.solver.holding = true;
    host.solver.needs_to_run = false;
    EXPECT_FALSE(solver.Run());
    EXPECT_EQ("", host.solver.calls);
    host.solver.needs_to_run = true;
    EXPECT_TRUE(solver.Run());
    EXPECT_EQ("release task ", host.solver.calls);
    EXPECT_EQ("running", Read(solver, "state"));
    EXPECT_EQ("3 ", listener.told);
    EXPECT_TRUE(solver.Unsubscribe(&listener, 3));
}

TEST_F(Solvers, pause_resume_and_stop_follow_the_run_state) {
    Listener listener;
    ASSERT_TRUE(solver.Subscribe(&listener, 3, Listener::Hear));
    solver.Pause();
    solver.Resume();
    solver.Stop();
    EXPECT_EQ("", host.solver.calls) << "stopped";
    ASSERT_TRUE(solver.Run());
    solver.Pause();
    EXPECT_EQ("running", Read(solver, "state")) << "no pause was requested";
    host.solver.pause_requested = true;
    solver.Pause();
    EXPECT_EQ("paused", Read(solver, "state"));
    EXPECT_EQ("release task hold ", host.solver.calls);
    solver.Stop();
    EXPECT_EQ("release task hold ", host.solver.calls) << "a paused solve is not stopped";
    host.solver.finished = true;
    host.manager.callback->SimulationStep();
    EXPECT_EQ("paused", Read(solver, "state")) << "a paused solve does not end";
    host.solver.finished = false;
    listener.told = "3 3 ";
    solver.Resume();
    EXPECT_EQ("running", Read(solver, "state"));
    EXPECT_EQ("3 3 3 ", listener.told);
    host.solver.calls.clear();
    solver.Stop();
    solver.Stop();
    EXPECT_EQ("hold hold ", host.solver.calls);
    EXPECT_EQ("running", Read(solver, "state")) << "until the end is reported";
    host.solver.finished = true;
    host.manager.callback->SimulationStep();
    EXPECT_EQ("stopped", Read(solver, "state"));
    EXPECT_TRUE(solver.Unsubscribe(&listener, 3));
}

TEST_F(Solvers, a_change_of_state_is_told_before_the_solver_is_moved) {
    Listener listener;
    ASSERT_TRUE(solver.Subscribe(&listener, 3, Listener::Hear));
    std::string seen;
    listener.action = [&] { seen += Read(solver, "state") + " (" + host.solver.calls + ") "; };
    ASSERT_TRUE(solver.Run());
    host.solver.pause_requested = true;
    solver.Pause();
    EXPECT_EQ("running () paused (release task ) ", seen);
    EXPECT_TRUE(solver.Unsubscribe(&listener, 3));
}

TEST_F(Solvers, the_end_is_told_with_the_solver_on_hold_and_before_the_step) {
    Listener complete, state;
    ASSERT_TRUE(solver.Subscribe(&state, 3, Listener::Hear));
    ASSERT_TRUE(solver.Subscribe(&complete, 0, Listener::Hear));
    ASSERT_TRUE(solver.Run());
    host.solver.holding = false;
    host.solver.finished = true;
    host.solver.needs_to_run = false;
    std::string order;
    complete.action = [&] {
        order += "end " + Read(solver, "state") + (host.solver.holding ? " held " : " free ");
    };
    state.action = [&] { order += "step "; };
    host.manager.callback->SimulationStep();
    EXPECT_EQ("end stopped held step ", order);
    EXPECT_TRUE(solver.Unsubscribe(&complete, 0));
    EXPECT_TRUE(solver.Unsubscribe(&state, 3));
}

TEST_F(Solvers, the_end_of_a_solve_is_reported_by_how_it_ended) {
    struct Case {
        bool needs_to_run;
        const char* complete;
        const char* incomplete;
    };
    const Case cases[] = {{false, "0(4,0,0 Solve is complete; ) ", ""},
                          {true, "", "1(2,0,0 Solve did not complete; ) "}};
    for (const Case& each : cases) {
        Listener complete, incomplete, state;
        ASSERT_TRUE(solver.Subscribe(&complete, 0, Listener::Hear));
        ASSERT_TRUE(solver.Subscribe(&incomplete, 1, Listener::Hear));
        ASSERT_TRUE(solver.Subscribe(&state, 3, Listener::Hear));
        host.solver.needs_to_run = true;
        host.solver.finished = false;
        host.solver.holding = true;
        ASSERT_TRUE(solver.Run());
        host.manager.callback->SimulationStep();
        EXPECT_EQ("3 3 ", state.told);
        EXPECT_EQ("running", Read(solver, "state"));
        host.solver.finished = true;
        host.solver.needs_to_run = each.needs_to_run;
        host.manager.callback->SimulationStep();
        EXPECT_EQ(each.complete, complete.told);
        EXPECT_EQ(each.incomplete, incomplete.told);
        EXPECT_EQ("3 3 3 ", state.told);
        EXPECT_TRUE(host.solver.holding);
        EXPECT_EQ("stopped", Read(solver, "state"));
        host.manager.callback->SimulationStep();
        EXPECT_EQ(each.complete, complete.told) << "told once";
        EXPECT_TRUE(solver.Unsubscribe(&complete, 0));
        EXPECT_TRUE(solver.Unsubscribe(&incomplete, 1));
        EXPECT_TRUE(solver.Unsubscribe(&state, 3));
    }
}

TEST_F(Solvers, switches_take_numbers_and_four_texts) {
    struct Case {
        FIValue value;
        const char* answer;
        const char* calls;
    };
    const char* mismatch = "Argument type mismatch for autosolve.";
    host.solver.needs_to_run = false;
    const Case cases[] = {
        {FIValue::OfInt(1), "(NULL)", "release "},
        {FIValue::OfInt(5), "(NULL)", "release "},
        {FIValue::OfInt(0), "(NULL)", "hold "},
        {FIValue("true"), "(NULL)", "release "},
        {FIValue("1"), "(NULL)", "release "},
        {FIValue("false"), "(NULL)", "hold "},
        {FIValue("0"), "(NULL)", "hold "},
        {FIValue("True"), mismatch, ""},
        {FIValue(""), mismatch, ""},
        {FIValue::OfReal(1.0), mismatch, ""},
        {FIValue(), mismatch, ""},
    };
    for (const Case& each : cases) {
        host.solver.calls.clear();
        EXPECT_EQ(each.answer, Set(solver, "autosolve", each.value)) << Shown(each.value);
        EXPECT_EQ(each.calls, host.solver.calls) << Shown(each.value);
        TheAdapter().SetWaitsForSolve(true);
        EXPECT_EQ(each.answer, Set(solver, "wait_for_solve", each.value)) << Shown(each.value);
        const bool off = std::string(each.calls) == "hold ";
        EXPECT_EQ(!off, TheAdapter().WaitsForSolve()) << Shown(each.value);
        EXPECT_EQ(off ? "INT 0" : "INT 1", Read(solver, "wait_for_solve"));
    }
    EXPECT_EQ("Not supported", Set(solver, "state", FIValue("running")));
    EXPECT_EQ("Not supported", Set(solver, "", FIValue("running")));
}

TEST_F(Solvers, autosolve_starts_what_needs_to_run_even_after_a_mismatch) {
    Set(solver, "autosolve", FIValue("what"));
    EXPECT_EQ("task ", host.solver.calls);
    Set(solver, "autosolve", FIValue("true"));
    EXPECT_EQ("task release task ", host.solver.calls) << "the solver is free first";
    host.solver.solving = true;
    Set(solver, "autosolve", FIValue::OfInt(0));
    EXPECT_EQ("task release task hold ", host.solver.calls);
}

TEST_F(Solvers, one_who_subscribes_twice_leaves_twice) {
    Listener listener;
    ASSERT_TRUE(solver.Subscribe(&listener, 3, Listener::Hear));
    ASSERT_TRUE(solver.Subscribe(&listener, 3, Listener::Hear));
    host.manager.callback->SimulationStep();
    EXPECT_EQ("3 3 ", listener.told);
    EXPECT_TRUE(solver.Unsubscribe(&listener, 3));
    ASSERT_TRUE(host.manager.callback) << "there is still a user";
    host.manager.callback->SimulationStep();
    EXPECT_EQ("3 3 3 ", listener.told);
    EXPECT_TRUE(solver.Unsubscribe(&listener, 3));
    EXPECT_EQ(nullptr, host.manager.callback);
}

TEST_F(Solvers, a_step_is_told_before_it_is_forwarded) {
    Foreign foreign;
    host.manager.put_ModelCallback(&foreign);
    Listener listener;
    ASSERT_TRUE(solver.Subscribe(&listener, 3, Listener::Hear));
    std::string seen = "not told";
    listener.action = [&] { seen = foreign.calls; };
    host.manager.callback->SimulationStep();
    EXPECT_EQ("", seen);
    EXPECT_EQ("step ", foreign.calls);
    EXPECT_TRUE(solver.Unsubscribe(&listener, 3));
    host.manager.put_ModelCallback(nullptr);
}

TEST_F(Solvers, only_steps_are_told_and_end_a_solve) {
    Listener listener;
    ASSERT_TRUE(solver.Subscribe(&listener, 3, Listener::Hear));
    ASSERT_TRUE(solver.Run());
    host.solver.finished = true;
    for (auto slot :
         {&host::IModelCallback::SimulationStarted, &host::IModelCallback::SimulationStopped}) {
        (host.manager.callback->*slot)();
        EXPECT_EQ("3 ", listener.told) << "of the start alone";
        EXPECT_EQ("running", Read(solver, "state"));
    }
    host.manager.callback->SimulationStep();
    EXPECT_EQ("3 3 ", listener.told);
    EXPECT_EQ("stopped", Read(solver, "state"));
    EXPECT_TRUE(solver.Unsubscribe(&listener, 3));
}

// Resuming is running again, with what running asks for.
TEST_F(Solvers, a_pause_is_resumed_only_while_there_is_work) {
    ASSERT_TRUE(solver.Run());
    host.solver.pause_requested = true;
    solver.Pause();
    host.solver.needs_to_run = false;
    solver.Resume();
    EXPECT_EQ("paused", Read(solver, "state"));
    EXPECT_EQ("release task hold ", host.solver.calls);
    host.solver.needs_to_run = true;
    solver.Resume();
    EXPECT_EQ("running", Read(solver, "state"));
    EXPECT_EQ("release task hold release task ", host.solver.calls);
}

TEST_F(Solvers, kind_2_is_refused_and_installs_nothing) {
    EXPECT_FALSE(solver.Subscribe(this, 2, Listener::Hear));
    EXPECT_EQ(nullptr, host.manager.callback);
    EXPECT_FALSE(solver.Unsubscribe(this, 2));
}

TEST_F(Solvers, without_a_case_nothing_happens) {
    host.session.active = nullptr;
    HSSSolver lonely(nullptr);
    HDynamicSolver lonely_dynamic(nullptr);
    FIErrorList errors;
    EXPECT_EQ(nullptr, lonely.CheckSolve(errors));
    EXPECT_EQ(nullptr, lonely_dynamic.CheckSolve(errors));
    lonely.SolveOnceNow(errors);
    EXPECT_EQ("", Text(errors));
    EXPECT_FALSE(lonely.Run());
    lonely.Pause();
    lonely.Stop();
    EXPECT_EQ("INT 0", Read(lonely, "autosolve"));
    EXPECT_EQ("false", Read(lonely, "active"));
    EXPECT_EQ("(NULL)", Set(lonely, "autosolve", FIValue::OfInt(1)));
    Listener listener;
    EXPECT_TRUE(lonely.Subscribe(&listener, 3, Listener::Hear));
    EXPECT_TRUE(lonely.Unsubscribe(&listener, 3));
}

// ---- Notification ----

TEST_F(Solvers, the_first_user_installs_and_the_last_takes_out) {
    Foreign foreign;
    host.manager.put_ModelCallback(&foreign);
    EXPECT_EQ(2u, foreign.references);
    Listener one, two;
    ASSERT_TRUE(solver.Subscribe(&one, 3, Listener::Hear));
    host::IModelCallback* own = host.manager.callback;
    EXPECT_NE(&foreign, own);
    ASSERT_TRUE(solver.Subscribe(&two, 3, Listener::Hear));
    EXPECT_EQ(own, host.manager.callback);
    EXPECT_FALSE(solver.Unsubscribe(&one, 0)) << "the kind counts";
    EXPECT_TRUE(solver.Unsubscribe(&one, 3));
    EXPECT_FALSE(solver.Unsubscribe(&one, 3));
    EXPECT_EQ(own, host.manager.callback);
    EXPECT_TRUE(solver.Unsubscribe(&two, 3));
    EXPECT_EQ(&foreign, host.manager.callback);
    EXPECT_EQ(2u, foreign.references);
    host.manager.put_ModelCallback(nullptr);
}

TEST_F(Solvers, notifications_go_to_the_raw_callback) {
    auto notify = HSolverNotify::ForCase(&host.simulation_case);
    notify->SetRawCallback(Raw);
    ASSERT_TRUE(host.manager.callback);
    host.manager.callback->SimulationStarted();
    host.manager.callback->SimulationStopped();
    host.manager.callback->SimulationStep();
    EXPECT_EQ(3, g_raw_changes);
    EXPECT_EQ(0, g_raw_deletions);
    host.manager.callback->SimulationEvent();
    EXPECT_EQ(3, g_raw_changes);
    EXPECT_EQ(1, g_raw_deletions);
    notify->SetRawCallback([](int) { FAIL() << "only the first one is taken"; });
    host.manager.callback->SimulationStep();
    EXPECT_EQ(4, g_raw_changes);
    notify->ClearRawCallback();
    notify->ClearRawCallback();
    EXPECT_EQ(nullptr, host.manager.callback);
    notify->SimulationStep();
    EXPECT_EQ(4, g_raw_changes);
}

TEST_F(Solvers, notifications_are_forwarded_in_place_of_the_raw_callback) {
    Foreign foreign;
    host.manager.put_ModelCallback(&foreign);
    auto notify = HSolverNotify::ForCase(&host.simulation_case);
    notify->SetRawCallback(Raw);
    host.manager.callback->SimulationStarted();
    host.manager.callback->SimulationStopped();
    host.manager.callback->SimulationStep();
    host.manager.callback->SimulationEvent();
    EXPECT_EQ("started stopped step event ", foreign.calls);
    EXPECT_EQ(0, g_raw_changes + g_raw_deletions);
    notify->ClearRawCallback();
    EXPECT_EQ(&foreign, host.manager.callback);
    host.manager.put_ModelCallback(nullptr);
    EXPECT_EQ(1u, foreign.references);
}

TEST_F(Solvers, there_is_one_object_a_case) {
    scripted::Case other;
    auto held = HSolverNotify::ForCase(&other);
    EXPECT_EQ(held.Get(), HSolverNotify::ForCase(&other).Get());
    EXPECT_NE(held.Get(), HSolverNotify::ForCase(&host.simulation_case).Get());
    EXPECT_EQ(2u, held->AddRef()) << "nobody else holds it";
    held->Release();
    held->ChangeState(HSolverNotify::kRunning);
    held.Reset();
    EXPECT_EQ(HSolverNotify::kStopped, HSolverNotify::ForCase(&other)->State())
        << "the last one who lets go takes it out";
}

#ifdef _WIN32
constexpr bool kPlatformMarshals = true;
#else
constexpr bool kPlatformMarshals = false;
#endif

TEST_F(Solvers, the_identity_and_the_marshaling_interface_are_answered) {
    const unsigned char identity[16] = {0, 0, 0, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46};
    const unsigned char other[16] = {1};
    scripted::Case of_other;
    auto notify = HSolverNotify::ForCase(&of_other);
    void* out = this;
    for (const unsigned char* id : {other, static_cast<const unsigned char*>(nullptr)}) {
        EXPECT_EQ(-2147467262, notify->QueryInterface(id, &out)) << "0x80004002";
        EXPECT_EQ(nullptr, out);
    }
    EXPECT_EQ(0, notify->QueryInterface(identity, &out));
    EXPECT_EQ(static_cast<host::IModelCallback*>(notify.Get()), out);
    EXPECT_EQ(1u, notify->Release());
    const unsigned char marshaling[16] = {3, 0, 0, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46};
    out = this;
    EXPECT_EQ(kPlatformMarshals, notify->QueryInterface(marshaling, &out) == 0);
    EXPECT_EQ(kPlatformMarshals, out != nullptr);
    // Every component interface begins with the same three operations.
    auto* marshaler = static_cast<host::IModelCallback*>(out);
    if (!marshaler) return;
    EXPECT_NE(static_cast<host::IModelCallback*>(notify.Get()), marshaler);
    void* back = nullptr;
    EXPECT_EQ(0, marshaler->QueryInterface(identity, &back));
    EXPECT_EQ(static_cast<host::IModelCallback*>(notify.Get()), back) << "one object";
    EXPECT_EQ(2u, notify->Release());
    EXPECT_EQ(1u, marshaler->Release());
}

TEST_F(Solvers, the_last_subscriber_may_leave_inside_its_callback) {
    scripted::Case other;
    other.manager = &host.manager;
    other.main_solver = &host.solver;
    Listener one, two;
    auto notify = HSolverNotify::ForCase(&other);
    notify->Subscribe(&one, 3, Listener::Hear);
    notify->Subscribe(&two, 3, Listener::Hear);
    HSolverNotify* bare = notify.Get();
    notify.Reset();
    one.action = [&] {
        bare->Unsubscribe(&one, 3);
        bare->Unsubscribe(&two, 3);
    };
    host.manager.callback->SimulationStep();
    EXPECT_EQ("3 ", one.told);
    EXPECT_EQ("", two.told) << "gone before its turn";
    EXPECT_EQ(nullptr, host.manager.callback);
}

TEST_F(Solvers, who_subscribes_in_a_round_is_told_next_time) {
    Listener one, late;
    solver.Subscribe(&one, 3, Listener::Hear);
    one.action = [&] {
        if (late.told.empty()) solver.Subscribe(&late, 3, Listener::Hear);
        one.action = nullptr;
    };
    host.manager.callback->SimulationStep();
    EXPECT_EQ("", late.told);
    host.manager.callback->SimulationStep();
    EXPECT_EQ("3 ", late.told);
    EXPECT_TRUE(solver.Unsubscribe(&one, 3));
    EXPECT_TRUE(solver.Unsubscribe(&late, 3));
}

}  // namespace

}  // namespace fixtop
