// SPDX-License-Identifier: Apache-2.0
// Cases that are closed, and hosts that are taken out, while the module is at work on them: its own
// records, the solver's notification and the batch of held streams.

#include <functional>
#include <vector>

#include "../casehost/case_builder.h"
#include "fixtop/fixtop.h"
#include "framework/reference/reference.h"
#include "host/adapter.h"
#include "host/solver/solve_wait.h"
#include "host/solver/solver.h"
#include "live_case.h"

namespace fixtop {

namespace {

using casehost::CaseData;
using casehost::ObjectData;
using casehost::test::Object;
using casehost::test::Real;

struct Heard {
    std::vector<int> kinds;
    std::function<void()> act;
    static void Tell(void* owner, int kind) {
        auto* self = static_cast<Heard*>(owner);
        self->kinds.push_back(kind);
        if (self->act) self->act();
    }
};

class CaseEnds : public LiveCase {
 protected:
    void OpenDemo() { Open("demo"); }
    casehost::Case& Live() { return *host.ActiveLiveCase(); }
    void Close() { host.Close(Live()); }
    static std::string ReadValue(FIReferenceBase& node) {
        FIValue out;
        node.GetAttribute(FIValue("value"), out);
        return Shown(out);
    }
    // One that takes subscribers.
    Ref<FIEntry> TellingTop() {
        auto models = Ref<HAandCContext>::Share(new HAandCContext(host.ActiveCase(), {}));
        FINotify slot = nullptr;
        return Ref<FIEntry>::Share(
            new FIXTopEntry(models.Get(), host.ActiveCase(), &slot, nullptr));
    }
    Ref<FIReferenceBase> ReferenceAt(const std::string& path) {
        NodeRef node = NodeRef::Adopt(new FIIterator(TellingTop().Get(), false));
        EXPECT_TRUE(node->SeekPath(FIValue(("appModel." + path).c_str()))) << path;
        return Ref<FIReferenceBase>::Adopt(node->MakeReference());
    }
    static constexpr char kTemperature[] = "FlowSheetObjects.Streams.Raw Gas.Temperature";
    static constexpr char kFlow[] = "FlowSheetObjects.Streams.Raw Gas.Molar Flow";
};

TEST_F(CaseEnds, a_store_that_waits_ends_with_its_case) {
    OpenDemo();
    NodeRef node = At(kFlow);
    script->NeverFinishSolve(true);
    script->AtTurn(3, [&] { Close(); });
    EXPECT_EQ("Node deleted", Store(*node, FIValue::OfReal(900)));
    EXPECT_EQ("Node deleted", Store(*node, FIValue::OfReal(800)));
}

TEST_F(CaseEnds, a_store_whose_object_goes_is_not_stored) {
    OpenDemo();
    NodeRef node = At(kFlow);
    script->InStore(1, [&] { Live().Delete(Live().FindByPath("Raw Gas", nullptr)->View()); });
    EXPECT_EQ("Node deleted", Store(*node, FIValue::OfReal(900)));
}

TEST_F(CaseEnds, a_store_ends_when_the_host_is_taken_out_meanwhile) {
    OpenDemo();
    NodeRef node = At(kFlow);
    script->NeverFinishSolve(true);
    script->AtTurn(2, [] {
        CaseLife::EndAll();
        TheAdapter().Install(nullptr);
    });
    EXPECT_EQ("Node deleted", Store(*node, FIValue::OfReal(900)));
    FIValue out;
    node->GetAttribute(FIValue("dimension"), out);
    EXPECT_EQ("Node deleted", Shown(out));
}

TEST_F(CaseEnds, a_batch_that_was_never_ended_ends_with_its_case) {
    OpenDemo();
    {
        NodeRef held = At("FlowSheetObjects.Streams.Raw Gas");
        EXPECT_TRUE(static_cast<FIIterator&>(*held).EntryAt(held->Depth())->CanHold());
        EXPECT_TRUE(TheAdapter().EditBatch().IsOpen());
    }
    Close();
    EXPECT_FALSE(TheAdapter().EditBatch().IsOpen());
    host.RunHostLoop();
    OpenDemo();
    NodeRef node = At(kFlow);
    EXPECT_EQ("(NULL)", Store(*node, FIValue::OfReal(900)));
    EXPECT_FALSE(Live().Solver().NeedsToRun()) << "the store has solved";
}

TEST_F(CaseEnds, a_held_stream_that_is_deleted_holds_nothing_up) {
    OpenDemo();
    NodeRef held = At("FlowSheetObjects.Streams.Raw Gas");
    FIEntry* entry = static_cast<FIIterator&>(*held).EntryAt(held->Depth());
    EXPECT_TRUE(entry->CanHold());
    Live().Delete(Live().FindByPath("Raw Gas", nullptr)->View());
    host.RunHostLoop();
    EXPECT_FALSE(TheAdapter().EditBatch().IsOpen());
    entry->BeginBatch();
    EXPECT_FALSE(entry->CanHold());
}

TEST_F(CaseEnds, subscribers_of_a_reference_are_told_once_and_at_its_release) {
    OpenDemo();
    auto reference = ReferenceAt(kTemperature);
    Heard deletion;
    Heard value;
    ASSERT_TRUE(reference->Subscribe(&deletion, kNodeDeleted, Heard::Tell));
    ASSERT_TRUE(reference->Subscribe(&value, kValueChanged, Heard::Tell));
    Close();
    EXPECT_EQ(std::vector<int>{1}, deletion.kinds);
    EXPECT_EQ(std::vector<int>{1}, value.kinds);
    EXPECT_EQ("Node deleted", ReadValue(*reference));
    host.RunHostLoop();
    EXPECT_EQ("Node deleted", ReadValue(*reference));
    EXPECT_EQ(1u, deletion.kinds.size());
    reference.Reset();
    EXPECT_EQ(2u, deletion.kinds.size()) << "destruction tells again";
}

TEST_F(CaseEnds, references_hear_of_their_case_when_another_client_has_left) {
    OpenDemo();
    auto notify = HSolverNotify::ForCase(host.ActiveCase());
    notify->SetRawCallback(&FIXTopEntry::Dispatch);
    auto other_top = TellingTop();
    auto reference = ReferenceAt(kTemperature);
    Heard value;
    ASSERT_TRUE(reference->Subscribe(&value, kValueChanged, Heard::Tell));
    // The other client goes twice, and empties the list that all share.
    notify->ClearRawCallback();
    notify->ClearRawCallback();
    other_top.Reset();
    Live().Rename(Live().FindByPath("Tail Gas", nullptr)->View(), "Tail");
    EXPECT_EQ(std::vector<int>{1}, value.kinds);
    EXPECT_EQ("REAL 30", ReadValue(*reference));
    Close();
    EXPECT_EQ(2u, value.kinds.size());
    EXPECT_EQ("Node deleted", ReadValue(*reference));
}

TEST_F(CaseEnds, a_change_is_told_once_by_whatever_roads) {
    OpenDemo();
    auto notify = HSolverNotify::ForCase(host.ActiveCase());
    notify->SetRawCallback(&FIXTopEntry::Dispatch);
    auto reference = ReferenceAt(kTemperature);
    Heard value;
    ASSERT_TRUE(reference->Subscribe(&value, kValueChanged, Heard::Tell));
    Live().Rename(Live().FindByPath("Tail Gas", nullptr)->View(), "Tail");
    EXPECT_EQ(std::vector<int>{1}, value.kinds);
}

TEST_F(CaseEnds, the_notification_is_taken_out_with_the_last_who_watches) {
    OpenDemo();
    host::COnlineConnectivityManager* manager = host.ActiveCase()->OnlineManager();
    ASSERT_TRUE(manager);
    EXPECT_EQ(nullptr, manager->ModelCallback());
    auto reference = ReferenceAt(kTemperature);
    EXPECT_NE(nullptr, manager->ModelCallback());
    auto second = ReferenceAt(kFlow);
    reference.Reset();
    EXPECT_NE(nullptr, manager->ModelCallback());
    second.Reset();
    EXPECT_EQ(nullptr, manager->ModelCallback());
}

TEST_F(CaseEnds, a_solver_of_a_closed_case_does_nothing) {
    OpenDemo();
    HSSSolver solver(host.ActiveCase());
    Heard nobody;
    Close();
    host.RunHostLoop();
    FIValue out;
    solver.GetAttribute(FIValue("autosolve"), out);
    EXPECT_EQ("Node deleted", Shown(out));
    solver.SetAttribute(FIValue("autosolve"), FIValue::OfInt(1), out);
    EXPECT_EQ("Node deleted", Shown(out));
    EXPECT_FALSE(solver.Run());
    solver.Pause();
    solver.Stop();
    FIErrorList errors;
    solver.SolveOnceNow(errors);
    EXPECT_EQ(nullptr, solver.CheckSolve(errors));
    EXPECT_TRUE(errors.empty());
    EXPECT_FALSE(solver.Subscribe(&nobody, 3, [](void*, int, const FIErrorList*) {}));
    EXPECT_FALSE(solver.Unsubscribe(&nobody, 3));
}

TEST_F(CaseEnds, a_late_leaving_asks_nothing_of_a_case_that_is_gone) {
    OpenDemo();
    host::SimulationCase* gone = host.ActiveCase();
    HSolverNotify::ForCase(gone)->SetRawCallback(&FIXTopEntry::Dispatch);
    Close();
    host.RunHostLoop();
    EXPECT_EQ(nullptr, CaseLife::Find(gone));
}

TEST_F(CaseEnds, an_untold_closing_is_found_out_by_the_next_use) {
    casehost::UseStandardParts(host);
    CaseData data;
    data.name = "quiet";
    data.online = false;
    data.main.objects = {Object("Feed", "MaterialStreamObject", {Real("Temperature", "", 25)})};
    ASSERT_TRUE(host.Open(data));
    TheAdapter().Install(&host.Services());
    ASSERT_EQ(nullptr, host.ActiveCase()->OnlineManager()) << "nobody tells";
    Heard deletion;
    auto reference = ReferenceAt("FlowSheetObjects.Streams.Feed.Temperature");
    ASSERT_TRUE(reference->Subscribe(&deletion, kNodeDeleted, Heard::Tell));
    NodeRef node = At("FlowSheetObjects.Streams.Feed.Temperature");
    EXPECT_EQ("REAL 25", ReadValue(*reference));
    Close();
    host.RunHostLoop();
    EXPECT_EQ("Node deleted", ReadValue(*reference));
    EXPECT_EQ(1u, deletion.kinds.size());
    FIValue out;
    node->GetAttribute(FIValue("value"), out);
    EXPECT_EQ("Node deleted", Shown(out));
    node->GetPath(out);
    EXPECT_EQ("(NULL)", Shown(out));
}

TEST_F(CaseEnds, objects_have_numbers_where_the_host_answers_for_them) {
    OpenDemo();
    const host::Viewable& object = *Live().FindByPath("Raw Gas", nullptr)->View();
    EXPECT_NE(0u, IdentityOf(object));
    EXPECT_EQ(object.Identity(), IdentityOf(object));
    TheAdapter().Install(nullptr);
    EXPECT_EQ(0u, IdentityOf(object));
}

TEST_F(CaseEnds, a_newcomer_of_the_same_name_is_never_shown) {
    OpenDemo();
    auto reference = ReferenceAt(kTemperature);
    NodeRef node = At(kTemperature);
    NodeRef object = At("FlowSheetObjects.Streams.Raw Gas");
    const ObjectData newcomer =
        Object("Raw Gas", "MaterialStreamObject", {Real("Temperature", "", 99)});
    for (int round = 0; round < 20; ++round) {
        host::Viewable* old = Live().FindByPath("Raw Gas", nullptr)->View();
        ASSERT_TRUE(Live().Delete(old));
        host.RunHostLoop();
        ASSERT_TRUE(Live().Add(nullptr, newcomer));
        EXPECT_EQ(round == 0 ? "Node invalid" : "Node deleted", ReadValue(*reference));
        FIValue out;
        node->GetAttribute(FIValue("value"), out);
        EXPECT_EQ("Node deleted", Shown(out));
        EXPECT_EQ("(NULL)", NameAt(*object));
    }
    EXPECT_EQ("REAL 99", Read(*At(kTemperature), "value"));
}

TEST_F(CaseEnds, a_renamed_object_is_followed_though_another_takes_its_name) {
    OpenDemo();
    auto reference = ReferenceAt(kTemperature);
    NodeRef object = At("FlowSheetObjects.Streams.Raw Gas");
    ASSERT_TRUE(Live().Rename(Live().FindByPath("Raw Gas", nullptr)->View(), "Feed Gas"));
    ASSERT_TRUE(Live().Rename(Live().FindByPath("Tail Gas", nullptr)->View(), "Raw Gas"));
    EXPECT_EQ("REAL 30", ReadValue(*reference));
    FIValue path;
    reference->GetPath(path);
    EXPECT_EQ("Top.appModel.FlowSheetObjects.Streams.Feed Gas.Temperature", Shown(path));
    EXPECT_EQ("Feed Gas", NameAt(*object));
}

TEST_F(CaseEnds, a_frozen_place_is_given_up_by_a_move) {
    OpenDemo();
    NodeRef node = At("FlowSheetObjects.Streams.Raw Gas");
    node->Freeze();
    ASSERT_TRUE(node->Next());
    const std::string second = NameAt(*node);
    EXPECT_TRUE(node->Thaw());
    EXPECT_EQ(second, NameAt(*node)) << "the newer position counts";
    node->Freeze();
    ASSERT_TRUE(Live().Delete(Live().FindByPath(second, nullptr)->View()));
    host.RunHostLoop();
    EXPECT_FALSE(node->Thaw());
}

}  // namespace

}  // namespace fixtop
