// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "host/adapter.h"
#include "host/levels/case_top.h"
#include "host/levels/document.h"
#include "host/levels/model_nodes.h"
#include "host/solver/solver.h"
#include "support/host_reading.h"
#include "support/scripted_host.h"
#include "support/vtable_slot.h"

namespace fixtop {

namespace {

bool SetContextFlag(FIContext* context, bool follow) {
    auto given_up = Ref<FIContext>::Adopt(context);
    static_cast<HAandCContext*>(context)->FollowAttachments(follow);
    return true;
}

bool Refuse(FIContext* context, bool) {
    context->Release();
    return false;
}

class Tops : public testing::Test {
 protected:
    Tops() : context(Ref<HAandCContext>::Share(new HAandCContext(nullptr, {}))) { Make(); }
    ~Tops() override { TheAdapter().SetAttachCall(nullptr); }

    void Make() {
        top = Ref<FIXTopEntry>::Share(
            new FIXTopEntry(context.Get(), nullptr, &notify, new HSSSolver(nullptr)));
    }

    scripted::Host host;
    Ref<HAandCContext> context;
    FINotify notify = nullptr;
    Ref<FIXTopEntry> top;
};

TEST_F(Tops, attributes_are_the_six_rows) {
    EXPECT_EQ(
        std::vector<std::string>({"id", "type", "status", "server", "visible", "attachments"}),
        ShownRows(*static_cast<FIEntry*>(top.Get())));
    EXPECT_EQ("Top", NameOf(*top));
    EXPECT_EQ("Top", Read(*top, "id"));
    EXPECT_EQ("TopNode", Read(*top, "type"));
    auto plain = Ref<FITopEntry>::Share(new FITopEntry(context.Get(), nullptr, nullptr));
    EXPECT_EQ(Read(*plain, "server"), Read(*top, "server"));
    EXPECT_NE("(NULL)", Read(*top, "server"));
    EXPECT_EQ("true", Read(*top, "visible"));
    host.simulation_case.visible = false;
    EXPECT_EQ("false", Read(*top, "visible"));
    EXPECT_EQ("INT 1", Read(*top, "attachments"));
    EXPECT_EQ("(NULL)", Read(*top, "value"));
    EXPECT_EQ(context.Get(), Ref<FIContext>::Adopt(top->GetContext()).Get());
}

TEST_F(Tops, the_host_is_told_to_trace_errors) {
    EXPECT_EQ("ErrorsToTrace=1 NumErrsToTrace=1 ", host.config);
}

TEST_F(Tops, the_solver_is_lent) {
    void* service = nullptr;
    for (int kind : {1, 2}) {
        EXPECT_TRUE(top->QueryService(kind, &service)) << kind;
        EXPECT_EQ(1, static_cast<FISolver*>(service)->Kind());
    }
    EXPECT_FALSE(top->QueryService(3, &service));
    EXPECT_EQ(nullptr, service);
    auto bare = Ref<FIXTopEntry>::Share(new FIXTopEntry(context.Get(), nullptr, nullptr, nullptr));
    EXPECT_FALSE(bare->QueryService(1, &service));
}

TEST_F(Tops, the_solver_goes_with_its_entry) {
    auto notify_of_case = HSolverNotify::ForCase(&host.simulation_case);
    const auto held = notify_of_case->AddRef();
    top.Reset();
    EXPECT_EQ(held - 1, notify_of_case->Release() + 1) << "the solver has given up its reference";
}

TEST_F(Tops, a_null_case_is_the_active_one) {
    scripted::Case other;
    other.visible = false;
    other.document = host::FileName(host::Text("/cases/other.case"), host::Text());
    auto of_other =
        Ref<FIXTopEntry>::Share(new FIXTopEntry(context.Get(), &other, nullptr, nullptr));
    EXPECT_EQ("false", Read(*of_other, "visible"));
    EXPECT_EQ("true", Read(*top, "visible"));
    const std::pair<host::SimulationCase*, const char*> documents[] = {{nullptr, "plant"},
                                                                       {&other, "other"}};
    for (const auto& [given, name] : documents) {
        FIValue out;
        HDocumentAgg(given).DocumentName(out);
        EXPECT_EQ(name, Shown(out));
    }
}

TEST_F(Tops, status_is_that_of_the_solver) {
    EXPECT_EQ("Severe error, no solver found.", Read(*top, "status"));
    scripted::Plain state;
    host.simulation_case.resolved["FlowSht.1/Solver.400"] = &state;
    struct Case {
        double running;
        double ready;
        const char* consistency;
        const char* status;
    };
    const Case cases[] = {{0.0, 0.0, "Feed.1", "Solver running."},
                          {0.0, 1.0, "Unknown.0", "Solver running."},
                          {1.0, 0.0, "Feed.1", "Ready"},
                          {1.0, 1.0, "Feed.1", "Holding, consistency error."},
                          {-32767.0, 1.0, "Unknown.0", "Holding"},
                          {1.0, 1.0, "Unknown.0", "Holding"},
                          {1.0, 1.0, "", "Holding, consistency error."}};
    for (const Case& each : cases) {
        state.reals[":Boolean.302"] = each.running;
        state.reals[":Boolean.300"] = each.ready;
        state.texts["ConsistencyVariable"] = each.consistency;
        EXPECT_EQ(each.status, Read(*top, "status"));
    }
    host.session.active = nullptr;
    Make();
    EXPECT_EQ("(NULL)", Read(*top, "status"));
    EXPECT_EQ("(NULL)", Read(*top, "visible"));
}

// ---- Writes ----

TEST_F(Tops, writes_check_name_first) {
    FIValue out;
    top->SetAttribute(FIValue(), FIValue(), 0, out);
    EXPECT_EQ("No attribute name supplied", Shown(out));
    EXPECT_EQ("No attribute name supplied", Write(*top, "", FIValue()));
    EXPECT_EQ("Attribute not supported.", Write(*top, "status", FIValue("x")));
    EXPECT_EQ("Attribute not supported.", Write(*top, "skipattachments", FIValue::OfInt(1)));
}

TEST_F(Tops, attachments_go_to_the_context) {
    EXPECT_EQ("Unable to set attachments", Write(*top, "attachments", FIValue::OfInt(0)));
    EXPECT_EQ("INT 0", Read(*top, "attachments"));
    EXPECT_TRUE(context->FollowsAttachments());
    TheAdapter().SetAttachCall(SetContextFlag);
    EXPECT_EQ("(NULL)", Write(*top, "attachments", FIValue::OfInt(0)));
    EXPECT_FALSE(context->FollowsAttachments());
    EXPECT_EQ("(NULL)", Write(*top, "attachments", FIValue::OfInt(1)));
    EXPECT_TRUE(context->FollowsAttachments());
    TheAdapter().SetAttachCall(Refuse);
    EXPECT_EQ("Unable to set attachments", Write(*top, "attachments", FIValue::OfInt(0)));
    EXPECT_EQ(3, context->AddRef()) << "the test's and the entry's references are left";
    context->Release();
}

TEST_F(Tops, a_case_is_hidden_and_shown_with_its_window) {
    struct Case {
        FIValue value;
        int window;
        bool last_case;
        const char* calls;
    };
    const Case cases[] = {
        {FIValue("false"), 1, true, "hide window=0 "},
        {FIValue("0"), 4, true, "hide window=0 "},
        {FIValue::OfInt(0), 0, true, "hide "},
        // Another case is still active: the window stays.
        {FIValue("false"), 2, false, "hide "},
        {FIValue("true"), 0, true, "window=4 show update "},
        {FIValue("1"), 0, true, "window=4 show update "},
        {FIValue::OfInt(1), 1, true, "show update "},
        {FIValue("true"), 4, true, "show update "},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(Shown(each.value) + " window " + std::to_string(each.window));
        host.session.active = &host.simulation_case;
        host.session.deactivates = each.last_case;
        host.form.show_state = each.window;
        host.window_calls.clear();
        EXPECT_EQ("(NULL)", Write(*top, "visible", each.value));
        EXPECT_EQ(each.calls, host.window_calls);
    }
    host.session.form = nullptr;
    EXPECT_EQ("(NULL)", Write(*top, "visible", FIValue("true")));
}

TEST_F(Tops, visibility_needs_a_case_and_a_boolean) {
    const char* mismatch = "Argument mismatch, boolean value required.";
    EXPECT_EQ(mismatch, Write(*top, "visible", FIValue()));
    EXPECT_EQ(mismatch, Write(*top, "visible", FIValue("yes")));
    EXPECT_EQ(mismatch, Write(*top, "visible", FIValue("")));
    EXPECT_EQ(mismatch, Write(*top, "visible", FIValue("TRUE")));
    host.session.active = nullptr;
    Make();
    EXPECT_EQ("Application Interface is not available.", Write(*top, "visible", FIValue()));
    EXPECT_EQ("Application Interface is not available.", Write(*top, "visible", FIValue("true")));
}

// ---- Subscriptions ----

struct Listener {
    std::string told;
    std::function<void()> action;
    static void Hear(void* owner, int kind) {
        auto* self = static_cast<Listener*>(owner);
        self->told.append(std::to_string(kind)).append(" ");
        if (self->action) self->action();
    }
};

TEST_F(Tops, changes_and_deletions_reach_their_subscribers) {
    Listener deleted, value, structure;
    ASSERT_TRUE(notify);
    EXPECT_TRUE(top->Subscribe(&deleted, 0, Listener::Hear));
    EXPECT_TRUE(top->Subscribe(&value, 1, Listener::Hear));
    EXPECT_TRUE(top->Subscribe(&structure, 2, Listener::Hear));
    notify(0);
    EXPECT_EQ("", deleted.told);
    EXPECT_EQ("1 ", value.told);
    EXPECT_EQ("2 ", structure.told);
    notify(7);
    EXPECT_EQ("0 ", deleted.told);
    EXPECT_EQ("1 ", value.told);
    Write(*top, "visible", FIValue("true"));
    EXPECT_EQ("1 1 ", value.told) << "showing the case is a change";
    Write(*top, "visible", FIValue("false"));
    EXPECT_EQ("1 1 1 ", value.told) << "so is hiding it";
    Write(*top, "visible", FIValue("maybe"));
    Write(*top, "visible", FIValue());
    Write(*top, "attachments", FIValue::OfInt(1));
    EXPECT_EQ("1 1 1 ", value.told);
    EXPECT_FALSE(top->Unsubscribe(&value, 2));
    EXPECT_FALSE(top->Unsubscribe(&structure, 1));
    EXPECT_TRUE(top->Unsubscribe(&value, 1));
    EXPECT_FALSE(top->Unsubscribe(&value, 1));
    notify(0);
    EXPECT_EQ("1 1 1 ", value.told);
    EXPECT_EQ("0 ", deleted.told);
}

TEST_F(Tops, who_unsubscribes_in_a_round_is_skipped) {
    Listener one, two;
    top->Subscribe(&one, 1, Listener::Hear);
    top->Subscribe(&two, 1, Listener::Hear);
    one.action = [&] { EXPECT_TRUE(top->Unsubscribe(&two, 1)); };
    notify(0);
    EXPECT_EQ("", two.told);
    one.action = nullptr;
    notify(0);
    EXPECT_EQ("1 1 ", one.told);
    EXPECT_EQ("", two.told);
}

TEST_F(Tops, without_a_slot_nobody_subscribes) {
    auto bare = Ref<FIXTopEntry>::Share(new FIXTopEntry(context.Get(), nullptr, nullptr, nullptr));
    EXPECT_FALSE(bare->Subscribe(this, 1, Listener::Hear));
    EXPECT_FALSE(bare->Unsubscribe(this, 1));
}

TEST_F(Tops, the_list_is_the_module_s_and_goes_with_any_entry) {
    Listener listener;
    top->Subscribe(&listener, 1, Listener::Hear);
    {
        FINotify second_notify = nullptr;
        auto second = Ref<FIXTopEntry>::Share(
            new FIXTopEntry(context.Get(), nullptr, &second_notify, nullptr));
        second_notify(0);
        EXPECT_EQ("1 ", listener.told);
    }
    notify(0);
    EXPECT_EQ("1 ", listener.told);
}

// ---- The document ----

int g_collections = 0;

TEST_F(Tops, the_document_does_what_the_case_does) {
    HDocumentAgg document(nullptr);
    FIValue out;
    document.DocumentName(out);
    EXPECT_EQ("plant", Shown(out));
    document.ApplicationName(out);
    EXPECT_EQ("Hovex", Shown(out));
    document.SessionText(out);
    EXPECT_EQ("full text", Shown(out));
    EXPECT_TRUE(document.Save());
    EXPECT_EQ(1, host.simulation_case.saves);
    EXPECT_TRUE(document.SaveAs("/other/name.ext"));
    EXPECT_EQ(2, host.simulation_case.saves);
    EXPECT_EQ("/other/name.ext", host.simulation_case.document.FullPath().Str());
    FIErrorRecord error;
    document.ReadHistory(error);
    EXPECT_EQ("History not supported", error.text.ToText());
    error = FIErrorRecord();
    document.ClearHistory(error);
    EXPECT_EQ("History not supported", error.text.ToText());
    EXPECT_EQ(2, error.code);
}

TEST_F(Tops, the_document_has_one_collection) {
    EXPECT_EQ(nullptr, HDocumentAgg(nullptr).CreateCollection());
    HCollectionCalls calls;
    calls.make = [](host::SimulationCase*) -> void* {
        ++g_collections;
        return &g_collections;
    };
    calls.drop = [](void*) { --g_collections; };
    {
        HDocumentAgg document(nullptr, calls);
        EXPECT_EQ(&g_collections, document.CreateCollection());
        EXPECT_EQ(&g_collections, document.CreateCollection());
        EXPECT_EQ(1, g_collections);
        document.DropCollection();
        document.DropCollection();
        EXPECT_EQ(0, g_collections);
        document.CreateCollection();
    }
    EXPECT_EQ(0, g_collections);
}

TEST_F(Tops, a_document_without_a_case_answers_nothing) {
    host.session.active = nullptr;
    HDocumentAgg document(nullptr);
    FIValue out("left over");
    document.DocumentName(out);
    EXPECT_EQ("(NULL)", Shown(out));
    EXPECT_FALSE(document.Save());
    EXPECT_FALSE(document.SaveAs("x"));
    host.has_session = false;
    out = FIValue("left over");
    document.SessionText(out);
    EXPECT_EQ("(NULL)", Shown(out));
}

// ---- The order of operations ----

TEST(SlotOrder, solver_operations_stand_as_clients_expect) {
    const int first = kDestructorSlots;
    const int slots[] = {
        VtableSlot(&FISolver::Initialize),   VtableSlot(&FISolver::Kind),
        VtableSlot(&FISolver::CheckSolve),   VtableSlot(&FISolver::Options),
        VtableSlot(&FISolver::SolveOnceNow), VtableSlot(&FISolver::Reserved6),
        VtableSlot(&FISolver::Run),          VtableSlot(&FISolver::Pause),
        VtableSlot(&FISolver::Resume),       VtableSlot(&FISolver::Stop),
        VtableSlot(&FISolver::Reserved11),   VtableSlot(&FISolver::Reserved12),
        VtableSlot(&FISolver::Reserved13),   VtableSlot(&FISolver::Reserved14),
        VtableSlot(&FISolver::Reserved15),   VtableSlot(&FISolver::Subscribe),
        VtableSlot(&FISolver::Unsubscribe),  VtableSlot(&FISolver::GetAttribute),
        VtableSlot(&FISolver::SetAttribute), VtableSlot(&FISolver::GetAttributeSource),
        VtableSlot(&FISolver::SetVarSet),    VtableSlot(&FISolver::GetVarSet)};
    int expected = first;
    for (int slot : slots) EXPECT_EQ(expected++, slot);
}

TEST(SlotOrder, model_callback_slots_stand_as_the_host_expects) {
    using host::IModelCallback;
    const int slots[] = {VtableSlot(&IModelCallback::QueryInterface),
                         VtableSlot(&IModelCallback::AddRef),
                         VtableSlot(&IModelCallback::Release),
                         VtableSlot(&IModelCallback::SimulationStarted),
                         VtableSlot(&IModelCallback::SimulationStopped),
                         VtableSlot(&IModelCallback::SimulationStep),
                         VtableSlot(&IModelCallback::SimulationEvent)};
    int expected = 0;
    for (int slot : slots) EXPECT_EQ(expected++, slot);
}

TEST(NoHost, nodes_answer_without_a_host) {
    ASSERT_FALSE(TheAdapter().Services());
    auto context = Ref<HAandCContext>::Share(new HAandCContext(nullptr, {}));
    auto top = Ref<FIXTopEntry>::Share(new FIXTopEntry(context.Get(), nullptr, nullptr, nullptr));
    EXPECT_EQ("(NULL)", Read(*top, "status"));
    EXPECT_EQ("Application Interface is not available.", Write(*top, "visible", FIValue("true")));
    auto model = Child(*top, "appModel");
    EXPECT_EQ("OK", Read(*model, "status"));
    auto flowsheet = Child(*model, "FlowSheetObjects");
    ASSERT_TRUE(flowsheet);
    EXPECT_EQ("(NULL)", Read(*Child(*flowsheet, "Streams"), "container"));
    EXPECT_TRUE(ChildNames(*Child(*flowsheet, "Streams")).empty());
}

}  // namespace

}  // namespace fixtop
