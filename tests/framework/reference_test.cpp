// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "framework/iterator/saved_step.h"
#include "framework/reference/reference.h"
#include "support/scripted_tree.h"

namespace fixtop {

namespace {

// A client of a reference, which does what the test says when it is called.
struct Client {
    std::vector<int> kinds;
    std::function<void()> act;

    static void Told(void* owner, int kind) {
        auto* self = static_cast<Client*>(owner);
        self->kinds.push_back(kind);
        if (self->act) self->act();
    }
};

std::string Read(FIReferenceBase& reference, const char* name) {
    FIValue out;
    reference.GetAttribute(Text(name), out);
    return out.IsNull() ? "(NULL)" : out.ToText();
}

using Kinds = std::vector<int>;

int CountKind(const ScriptNode& node, int kind) {
    int count = 0;
    for (const auto& each : node.subscriptions) count += each.kind == kind;
    return count;
}

// Root.unit.temperature.
class Reference : public ::testing::Test {
 protected:
    Reference() : unit_(root_.Add("unit")), node_(unit_.Add("temperature")) {
        node_.Set("value", "20");
    }

    FIReference* Make() {
        const auto it = root_.Iterate();
        EXPECT_TRUE(it->SeekPath(Text("unit.temperature")));
        return static_cast<FIReference*>(it->MakeReference());
    }
    void LetNotify(bool root, bool unit, bool node) {
        root_.can_notify = root;
        unit_.can_notify = unit;
        node_.can_notify = node;
    }

    ScriptNode root_{"Root"};
    ScriptNode& unit_;
    ScriptNode& node_;
};

TEST_F(Reference, subscribes_to_its_deletion_and_to_the_nearest_ancestor) {
    LetNotify(true, true, true);
    const auto reference = Ref<FIReference>::Adopt(Make());
    EXPECT_EQ(FIReference::kLive, reference->GetState());
    EXPECT_EQ(1, CountKind(node_, kNodeDeleted));
    EXPECT_EQ(1, CountKind(unit_, kValueChanged));
    EXPECT_TRUE(root_.subscriptions.empty());
    EXPECT_EQ(1u, node_.subscriptions.size());
    EXPECT_EQ("20", Read(*reference, "value"));
    EXPECT_EQ(FIReference::kLive, reference->GetState());
}

TEST_F(Reference, asks_the_ancestors_up_to_the_first_that_accepts) {
    LetNotify(true, false, false);
    const auto reference = Ref<FIReference>::Adopt(Make());
    EXPECT_EQ(1, CountKind(root_, kValueChanged));
    Read(*reference, "value");
    EXPECT_EQ(FIReference::kLive, reference->GetState());
}

TEST_F(Reference, everything_is_unsubscribed_at_the_end) {
    LetNotify(true, true, true);
    Client client;
    {
        const auto reference = Ref<FIReference>::Adopt(Make());
        for (int kind : {kNodeDeleted, kValueChanged, kStructureChanged}) {
            EXPECT_TRUE(reference->Subscribe(&client, kind, &Client::Told));
        }
        EXPECT_EQ(3u, node_.subscriptions.size());
    }
    EXPECT_TRUE(node_.subscriptions.empty());
    EXPECT_TRUE(unit_.subscriptions.empty());
    // Those who wait for the deletion are told that the reference ends.
    EXPECT_EQ((Kinds{1}), client.kinds);
}

TEST_F(Reference, reads_after_the_deletion_answer_node_deleted_forever) {
    LetNotify(false, true, true);
    const auto reference = Ref<FIReference>::Adopt(Make());
    node_.Notify(kNodeDeleted);
    EXPECT_EQ(FIReference::kDeleted, reference->GetState());
    for (int i = 0; i < 3; ++i) EXPECT_EQ("Node deleted", Read(*reference, "value"));
    EXPECT_TRUE(node_.subscriptions.empty());
    EXPECT_FALSE(reference->Rebind());
    EXPECT_FALSE(reference->MarkStale());
    Client client;
    EXPECT_FALSE(reference->Subscribe(&client, kValueChanged, &Client::Told));
    reference->OnDeleted();
    reference->OnAncestorChanged();
    EXPECT_EQ(FIReference::kDeleted, reference->GetState());
    EXPECT_EQ(nullptr, reference->MakeElement());
}

TEST_F(Reference, every_guarded_operation_fails_after_the_deletion) {
    LetNotify(false, false, true);
    const auto reference = Ref<FIReference>::Adopt(Make());
    reference->OnDeleted();
    const FIValue any = Text("any");
    struct TextCase {
        const char* operation;
        std::function<void(FIReference&, FIValue&)> call;
        const char* expected;
    };
    const TextCase cases[] = {
        {"SetAttribute", [&](auto& r, auto& out) { r.SetAttribute(any, any, 0, out); },
         "Node deleted"},
        {"SetValue", [&](auto& r, auto& out) { r.SetValue(any, 0, out); }, "Node deleted"},
        {"SetValueInUnit", [&](auto& r, auto& out) { r.SetValueInUnit(any, any, 0, out); },
         "Node deleted"},
        {"SetSpecValue", [&](auto& r, auto& out) { r.SetSpecValue(any, 0, out); }, "Node deleted"},
        {"SetSpecValueInUnit", [&](auto& r, auto& out) { r.SetSpecValueInUnit(any, any, 0, out); },
         "Node deleted"},
        {"SetDisplayUnit", [&](auto& r, auto& out) { r.SetDisplayUnit(any, any, out); },
         "Node deleted"},
        {"SetDisplaySpecUnit", [&](auto& r, auto& out) { r.SetDisplaySpecUnit(any, any, out); },
         "Node deleted"},
        {"SetUnit", [&](auto& r, auto& out) { r.SetUnit(any, out); }, "Node deleted"},
        {"SetSpecUnit", [&](auto& r, auto& out) { r.SetSpecUnit(any, out); }, "Node deleted"},
        {"DumpXml", [&](auto& r, auto& out) { r.DumpXml(out, 1); }, "(NULL)"},
        {"DumpXmlDefault", [&](auto& r, auto& out) { r.DumpXmlDefault(out); }, "(NULL)"},
        {"DumpNode", [&](auto& r, auto& out) { r.DumpNode(out); }, "(NULL)"},
        {"DumpNodeFlat", [&](auto& r, auto& out) { r.DumpNodeFlat(out); }, "(NULL)"},
        {"DumpNodeDeep", [&](auto& r, auto& out) { r.DumpNodeDeep(out); }, "(NULL)"},
    };
    for (const TextCase& each : cases) {
        FIValue out = Text("before");
        each.call(*reference, out);
        EXPECT_EQ(each.expected, out.IsNull() ? "(NULL)" : out.ToText()) << each.operation;
    }
    FIValue out;
    reference->SetVar(any, any);
    EXPECT_FALSE(reference->GetVar(any, out));
    EXPECT_FALSE(reference->GetVarText("any", out));
    EXPECT_FALSE(reference->RemoveVar(any));
    EXPECT_FALSE(reference->RemoveVarText("any"));
    EXPECT_EQ("(NULL)", [&] {
        FIValue text;
        return reference->GetIterator()->GetVar(any, text) ? text.ToText() : "(NULL)";
    }());
}

TEST_F(Reference, guarded_operations_reach_the_node) {
    LetNotify(false, false, true);
    const auto reference = Ref<FIReference>::Adopt(Make());
    FIValue out;
    EXPECT_EQ("20", Read(*reference, "value"));
    EXPECT_EQ(FIReference::kLive, reference->GetState()) << "its deletion would be told";
    reference->SetAttribute(Text("value"), Text("21"), 0, out);
    EXPECT_TRUE(out.IsNull());
    EXPECT_EQ("21", Read(*reference, "value"));
    reference->SetValue(Text("22"), 0, out);
    EXPECT_EQ("22", Read(*reference, "value"));
    reference->SetSpecValue(Text("22"), 0, out);
    EXPECT_EQ("Not Supported", out.ToText());
    reference->SetVar(Text("v"), Text("1"));
    EXPECT_TRUE(reference->GetVarText("v", out));
    EXPECT_EQ("1", out.ToText());
    EXPECT_TRUE(reference->GetVar(Text("v"), out));
    EXPECT_EQ("1", out.ToText());
    EXPECT_TRUE(reference->RemoveVarText("v"));
    EXPECT_FALSE(reference->RemoveVar(Text("v")));
    reference->SetVar(Text("v"), Text("2"));
    EXPECT_TRUE(reference->RemoveVar(Text("v")));
    EXPECT_FALSE(reference->RemoveVarText("v"));
    reference->DumpNodeFlat(out);
    EXPECT_EQ("<Node name=\"temperature\" value=\"22\"/>\n", out.ToText());
}

TEST_F(Reference, dumps_go_as_deep_as_their_names_say) {
    node_.Add("low").Add("lower").Add("lowest");
    const auto reference = Ref<FIReference>::Adopt(Make());
    struct Case {
        const char* operation;
        void (*dump)(FIReference&, FIValue&);
        int nodes;
    };
    const Case cases[] = {
        {"DumpXml 2", [](FIReference& r, FIValue& out) { r.DumpXml(out, 2); }, 3},
        {"DumpXml 0", [](FIReference& r, FIValue& out) { r.DumpXml(out, 0); }, 1},
        {"DumpXmlDefault", [](FIReference& r, FIValue& out) { r.DumpXmlDefault(out); }, 2},
        {"DumpNode", [](FIReference& r, FIValue& out) { r.DumpNode(out); }, 2},
        {"DumpNodeFlat", [](FIReference& r, FIValue& out) { r.DumpNodeFlat(out); }, 1},
        {"DumpNodeDeep", [](FIReference& r, FIValue& out) { r.DumpNodeDeep(out); }, 4},
    };
    for (const Case& each : cases) {
        FIValue out;
        each.dump(*reference, out);
        const std::string text = out.ToText();
        int nodes = 0;
        for (std::size_t at = 0; (at = text.find("<Node", at)) != std::string::npos; ++at) ++nodes;
        EXPECT_EQ(each.nodes, nodes) << each.operation << ": " << text;
    }
}

TEST_F(Reference, forwards_the_rest_as_it_is) {
    const auto reference = Ref<FIReference>::Adopt(Make());
    EXPECT_EQ(2, reference->Depth());
    FIValue out;
    reference->GetName(out);
    EXPECT_EQ("temperature", out.ToText());
    reference->GetPath(out);
    EXPECT_EQ("Root.unit.temperature", out.ToText());
    char text[32];
    reference->NameText(text, sizeof text);
    EXPECT_STREQ("temperature", text);
    reference->PathText(text, sizeof text);
    EXPECT_STREQ("Root.unit.temperature", text);
    reference->KeyText(text, sizeof text);
    EXPECT_STREQ("", text);
    EXPECT_EQ(11, reference->NameLength());
    EXPECT_EQ(21, reference->PathLength());
    EXPECT_EQ(0, reference->KeyLength());
    reference->DumpVars(out);
    EXPECT_EQ("Frame\tVariable\t\tType\tValue\n", out.ToText());
    EXPECT_EQ(reference->GetIterator()->GetVarSet(), reference->GetVarSet());
    const auto copy = Ref<FIIteratorBase>::Adopt(reference->Copy());
    EXPECT_TRUE(copy->Equal(*reference->GetIterator()));
    EXPECT_NE(copy.Get(), reference->GetIterator());
}

TEST_F(Reference, compares_by_position) {
    unit_.Add("zone");
    const auto it = root_.Iterate();
    ASSERT_TRUE(it->SeekPath(Text("unit.zone")));
    const auto later = Ref<FIReferenceBase>::Adopt(it->MakeReference());
    const auto reference = Ref<FIReference>::Adopt(Make());
    EXPECT_LT(reference->Compare(*later), 0);
    EXPECT_TRUE(reference->Less(*later));
    EXPECT_TRUE(later->Greater(*reference));
    EXPECT_TRUE(reference->Equal(*reference));
    EXPECT_TRUE(reference->NotEqual(*later));
}

TEST_F(Reference, without_notifications_every_read_finds_the_node_again) {
    const auto reference = Ref<FIReference>::Adopt(Make());
    EXPECT_EQ(FIReference::kLive, reference->GetState());
    EXPECT_EQ("20", Read(*reference, "value"));
    EXPECT_EQ(FIReference::kStale, reference->GetState());
    ScriptNode twin("temperature");
    twin.Set("value", "30");
    unit_.children = {&twin};
    EXPECT_EQ("30", Read(*reference, "value"));
    EXPECT_EQ(FIReference::kStale, reference->GetState());
    unit_.children.clear();
    EXPECT_EQ("Node invalid", Read(*reference, "value"));
    EXPECT_EQ(FIReference::kDeleted, reference->GetState());
    EXPECT_EQ("Node deleted", Read(*reference, "value"));
}

TEST_F(Reference, a_node_that_is_not_found_again_is_told_as_deleted) {
    struct Case {
        const char* operation;
        std::function<bool(FIReference&, FIValue& out)> call;
        const char* answer;
    };
    const FIValue any = Text("any");
    const Case cases[] = {
        {"Rebind", [](auto& r, auto&) { return r.Rebind(); }, "before"},
        {"SetValue", [&](auto& r, auto& out) { return r.SetValue(any, 0, out), false; },
         "Node invalid"},
        {"DumpNode", [](auto& r, auto& out) { return r.DumpNode(out), false; }, "(NULL)"},
        {"RemoveVar", [&](auto& r, auto&) { return r.RemoveVar(any); }, "before"},
        {"Subscribe",
         [](auto& r, auto&) { return r.Subscribe(&r, kValueChanged, [](void*, int) { FAIL(); }); },
         "before"},
    };
    LetNotify(false, true, true);
    for (const Case& each : cases) {
        SCOPED_TRACE(each.operation);
        Client deletion;
        Client value;
        const auto reference = Ref<FIReference>::Adopt(Make());
        ASSERT_TRUE(reference->Subscribe(&deletion, kNodeDeleted, &Client::Told));
        ASSERT_TRUE(reference->Subscribe(&value, kValueChanged, &Client::Told));
        EXPECT_TRUE(reference->Rebind()) << "it is live";
        EXPECT_TRUE(reference->MarkStale());
        EXPECT_TRUE(reference->MarkStale()) << "it stays so";
        unit_.children.clear();
        FIValue out = Text("before");
        EXPECT_FALSE(each.call(*reference, out));
        EXPECT_EQ(each.answer, out.IsNull() ? "(NULL)" : out.ToText());
        EXPECT_EQ(FIReference::kDeleted, reference->GetState());
        EXPECT_EQ((Kinds{1}), deletion.kinds);
        EXPECT_EQ((Kinds{1}), value.kinds);
        EXPECT_TRUE(node_.subscriptions.empty());
        EXPECT_TRUE(unit_.subscriptions.empty());
        unit_.children = {&node_};
        EXPECT_EQ("Node deleted", Read(*reference, "value")) << "though it is there again";
    }
}

TEST_F(Reference, a_change_above_makes_it_stale_until_the_next_use) {
    LetNotify(false, true, true);
    const auto reference = Ref<FIReference>::Adopt(Make());
    Client client;
    ASSERT_TRUE(reference->Subscribe(&client, kValueChanged, &Client::Told));
    unit_.Notify(kValueChanged);
    EXPECT_EQ((Kinds{1}), client.kinds);
    EXPECT_EQ(FIReference::kStale, reference->GetState());
    unit_.Notify(kValueChanged);
    EXPECT_EQ((Kinds{1, 1}), client.kinds);
    EXPECT_EQ("20", Read(*reference, "value"));
    EXPECT_EQ(FIReference::kLive, reference->GetState());
    EXPECT_EQ(1, CountKind(unit_, kValueChanged));
    EXPECT_EQ(1, CountKind(node_, kNodeDeleted));
    EXPECT_EQ(1, CountKind(node_, kValueChanged));
    node_.Notify(kValueChanged);
    EXPECT_EQ((Kinds{1, 1, 1}), client.kinds);
    EXPECT_EQ(FIReference::kLive, reference->GetState());
}

TEST_F(Reference, finding_the_node_again_subscribes_in_order) {
    LetNotify(true, true, true);
    Client client;
    ScriptNode twin("temperature");
    twin.can_notify = true;
    const auto reference = Ref<FIReference>::Adopt(Make());
    for (int kind : {kStructureChanged, kNodeDeleted, kValueChanged}) {
        ASSERT_TRUE(reference->Subscribe(&client, kind, &Client::Told));
    }
    unit_.children = {&twin};
    ASSERT_TRUE(reference->MarkStale());
    ASSERT_TRUE(reference->Rebind());
    EXPECT_TRUE(node_.subscriptions.empty());
    ASSERT_EQ(3u, twin.subscriptions.size());
    EXPECT_EQ(kNodeDeleted, twin.subscriptions[0].kind);
    EXPECT_EQ(kValueChanged, twin.subscriptions[1].kind);
    EXPECT_EQ(kStructureChanged, twin.subscriptions[2].kind);
    ASSERT_EQ(1u, unit_.subscriptions.size());
    EXPECT_EQ(kValueChanged, unit_.subscriptions[0].kind);
    EXPECT_TRUE(root_.subscriptions.empty());
    twin.Notify(kNodeDeleted);
    EXPECT_EQ((Kinds{1, 1}), client.kinds) << "as one who waits for the deletion and for values";
}

TEST_F(Reference, finding_the_node_again_first_gives_back_in_order) {
    LetNotify(true, true, true);
    std::vector<std::string> given_back;
    for (ScriptNode* node : {&root_, &unit_, &node_}) {
        node->on_unsubscribe = [&given_back, node](int kind) {
            given_back.push_back(node->name.ToText() + " " + std::to_string(kind));
        };
    }
    Client client;
    const auto reference = Ref<FIReference>::Adopt(Make());
    for (int kind : {kStructureChanged, kValueChanged}) {
        ASSERT_TRUE(reference->Subscribe(&client, kind, &Client::Told));
    }
    ASSERT_TRUE(reference->MarkStale());
    ASSERT_TRUE(reference->Rebind());
    EXPECT_EQ(
        (std::vector<std::string>{"temperature 0", "temperature 1", "unit 1", "temperature 2"}),
        given_back);
}

TEST_F(Reference, structure_clients_are_called_with_kind_2) {
    struct Case {
        bool unit;
        bool node;
        bool accepted;
    };
    const Case cases[] = {{true, true, true}, {true, false, true}, {false, false, false}};
    for (const Case& each : cases) {
        SCOPED_TRACE(each.unit * 2 + each.node);
        LetNotify(false, each.unit, each.node);
        const auto reference = Ref<FIReference>::Adopt(Make());
        Client client;
        EXPECT_EQ(each.accepted, reference->Subscribe(&client, kStructureChanged, &Client::Told));
        (each.node ? node_ : unit_).Notify(kStructureChanged);
        EXPECT_EQ(each.accepted ? Kinds{2} : Kinds{}, client.kinds);
        EXPECT_TRUE(reference->MarkStale());
        EXPECT_TRUE(reference->Rebind());
        EXPECT_EQ(each.accepted, reference->Unsubscribe(&client, kStructureChanged));
        EXPECT_EQ(0, CountKind(node_, kStructureChanged) + CountKind(unit_, kStructureChanged));
    }
}

TEST_F(Reference, value_clients_need_somebody_who_tells) {
    Client client;
    {
        const auto reference = Ref<FIReference>::Adopt(Make());
        EXPECT_FALSE(reference->Subscribe(&client, kValueChanged, &Client::Told));
        EXPECT_FALSE(reference->Unsubscribe(&client, kValueChanged));
        EXPECT_FALSE(reference->Subscribe(&client, 3, &Client::Told));
        EXPECT_FALSE(reference->Unsubscribe(&client, 3));
        EXPECT_TRUE(reference->Subscribe(&client, kNodeDeleted, &Client::Told));
        EXPECT_TRUE(reference->Unsubscribe(&client, kNodeDeleted));
    }
    EXPECT_TRUE(client.kinds.empty());
    const auto reference = Ref<FIReference>::Adopt(Make());
    LetNotify(true, false, false);
    EXPECT_TRUE(reference->Subscribe(&client, kValueChanged, &Client::Told));
    EXPECT_EQ(1, CountKind(root_, kValueChanged));
    EXPECT_TRUE(reference->Unsubscribe(&client, kValueChanged));
    EXPECT_TRUE(root_.subscriptions.empty());
}

TEST_F(Reference, deletion_calls_those_who_wait_for_it_and_for_values) {
    LetNotify(false, true, true);
    // They outlive the reference, which also calls those who wait for a deletion when it ends.
    Client deletion;
    Client value;
    Client structure;
    auto reference = Ref<FIReference>::Adopt(Make());
    ASSERT_TRUE(reference->Subscribe(&deletion, kNodeDeleted, &Client::Told));
    ASSERT_TRUE(reference->Subscribe(&value, kValueChanged, &Client::Told));
    ASSERT_TRUE(reference->Subscribe(&structure, kStructureChanged, &Client::Told));
    std::string seen;
    deletion.act = [&] { seen = Read(*reference, "value"); };
    value.act = [&] { EXPECT_EQ(1u, deletion.kinds.size()) << "those before these"; };
    const auto subscriptions = node_.subscriptions;
    node_.Notify(kNodeDeleted);
    deletion.act = nullptr;
    for (const auto& each : subscriptions) {
        if (each.kind == kNodeDeleted) each.callback(each.owner, kNodeDeleted);
    }
    EXPECT_EQ((Kinds{1}), deletion.kinds);
    EXPECT_EQ((Kinds{1}), value.kinds);
    EXPECT_TRUE(structure.kinds.empty());
    EXPECT_EQ("Node deleted", seen);
    reference.Reset();
    EXPECT_EQ((Kinds{1, 1}), deletion.kinds) << "the end of the reference is told as well";
    EXPECT_EQ((Kinds{1}), value.kinds);
}

TEST_F(Reference, while_it_ends_changes_are_told_to_nobody) {
    LetNotify(false, true, true);
    Client value;
    Client structure;
    auto reference = Ref<FIReference>::Adopt(Make());
    ASSERT_TRUE(reference->Subscribe(&value, kValueChanged, &Client::Told));
    ASSERT_TRUE(reference->Subscribe(&structure, kStructureChanged, &Client::Told));
    int left = 0;
    node_.on_unsubscribe = [&](int) {
        ++left;
        node_.Notify(kValueChanged);
        node_.Notify(kStructureChanged);
    };
    reference.Reset();
    EXPECT_EQ(3, left) << "deletion, value and structure";
    EXPECT_TRUE(value.kinds.empty());
    EXPECT_TRUE(structure.kinds.empty());
}

TEST_F(Reference, released_inside_a_callback_it_lives_until_the_round_ends) {
    LetNotify(false, true, true);
    struct Case {
        const char* what;
        std::function<void(ScriptNode& unit, ScriptNode& node)> notify;
        int kind;
    };
    const Case cases[] = {
        {"value", [](auto&, auto& node) { node.Notify(kValueChanged); }, kValueChanged},
        {"ancestor", [](auto& unit, auto&) { unit.Notify(kValueChanged); }, kValueChanged},
        {"structure", [](auto&, auto& node) { node.Notify(kStructureChanged); }, kStructureChanged},
        {"deletion", [](auto&, auto& node) { node.Notify(kNodeDeleted); }, kNodeDeleted},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.what);
        FIReference* reference = Make();
        const int alive = CountOf(CountedClass::FIReference).alive;
        Client first;
        Client second;
        int alive_inside = 0;
        first.act = second.act = [&] {
            if (reference) reference->Release();
            reference = nullptr;
            alive_inside = CountOf(CountedClass::FIReference).alive;
        };
        ASSERT_TRUE(reference->Subscribe(&first, each.kind, &Client::Told));
        ASSERT_TRUE(reference->Subscribe(&second, each.kind, &Client::Told));
        each.notify(unit_, node_);
        EXPECT_EQ(alive, alive_inside);
        EXPECT_EQ(alive - 1, CountOf(CountedClass::FIReference).alive);
        EXPECT_FALSE(first.kinds.empty());
        EXPECT_FALSE(second.kinds.empty());
        EXPECT_TRUE(node_.subscriptions.empty());
    }
}

TEST_F(Reference, released_in_the_middle_of_its_own_store_it_lives_until_the_store_ends) {
    LetNotify(false, true, true);
    FIReference* reference = Make();
    const int alive = CountOf(CountedClass::FIReference).alive;
    Client client;
    client.act = [&] { reference->Release(); };
    ASSERT_TRUE(reference->Subscribe(&client, kValueChanged, &Client::Told));
    node_.on_write = [&](FIVarSet*, const std::string&) { unit_.Notify(kValueChanged); };
    FIValue out = Text("before");
    reference->SetValue(Text("30"), 0, out);
    EXPECT_TRUE(out.IsNull());
    EXPECT_EQ(alive - 1, CountOf(CountedClass::FIReference).alive);
}

TEST_F(Reference, a_read_inside_the_callback_finds_the_node_again) {
    LetNotify(false, true, true);
    const auto reference = Ref<FIReference>::Adopt(Make());
    Client client;
    std::vector<std::string> seen;
    client.act = [&] { seen.push_back(Read(*reference, "value")); };
    ASSERT_TRUE(reference->Subscribe(&client, kValueChanged, &Client::Told));
    node_.on_write = [&](FIVarSet*, const std::string&) { unit_.Notify(kValueChanged); };
    FIValue out;
    reference->SetValue(Text("30"), 0, out);
    EXPECT_EQ((std::vector<std::string>{"20"}), seen);
    EXPECT_EQ("30", Read(*reference, "value"));
}

TEST_F(Reference, who_unsubscribes_inside_a_callback_is_not_called_again_in_the_round) {
    LetNotify(false, true, true);
    for (int kind : {kNodeDeleted, kValueChanged, kStructureChanged}) {
        SCOPED_TRACE(kind);
        // Whichever is called first takes out the other and itself.
        Client clients[2];
        const auto reference = Ref<FIReference>::Adopt(Make());
        bool left = true;
        for (Client& client : clients) {
            client.act = [&] {
                for (Client& each : clients) left = reference->Unsubscribe(&each, kind) && left;
                EXPECT_FALSE(reference->Unsubscribe(&clients[0], kind));
            };
            ASSERT_TRUE(reference->Subscribe(&client, kind, &Client::Told));
        }
        node_.Notify(kind);
        EXPECT_TRUE(left);
        EXPECT_EQ(1u, clients[0].kinds.size() + clients[1].kinds.size());
        if (kind != kNodeDeleted) {
            EXPECT_EQ(0, CountKind(node_, kind));
            node_.Notify(kind);
            EXPECT_EQ(1u, clients[0].kinds.size() + clients[1].kinds.size());
        }
    }
}

TEST_F(Reference, the_last_value_client_takes_the_value_subscriptions_with_it) {
    LetNotify(false, true, true);
    const auto reference = Ref<FIReference>::Adopt(Make());
    Client one;
    Client two;
    ASSERT_TRUE(reference->Subscribe(&one, kValueChanged, &Client::Told));
    ASSERT_TRUE(reference->Subscribe(&two, kValueChanged, &Client::Told));
    EXPECT_TRUE(reference->Unsubscribe(&one, kValueChanged));
    EXPECT_EQ(1, CountKind(node_, kValueChanged));
    EXPECT_TRUE(reference->Unsubscribe(&two, kValueChanged));
    EXPECT_EQ(0, CountKind(node_, kValueChanged));
    EXPECT_EQ(0, CountKind(unit_, kValueChanged));
    EXPECT_EQ(1, CountKind(node_, kNodeDeleted));
    EXPECT_FALSE(reference->Unsubscribe(&two, kValueChanged));
}

TEST_F(Reference, copies_start_in_the_others_state) {
    LetNotify(false, true, true);
    const auto reference = Ref<FIReference>::Adopt(Make());
    const auto live = Ref<FIReference>::Adopt(new FIReference(*reference));
    EXPECT_EQ(2, CountKind(node_, kNodeDeleted));
    reference->MarkStale();
    const auto stale = Ref<FIReference>::Adopt(new FIReference(*reference));
    EXPECT_EQ(FIReference::kStale, stale->GetState());
    EXPECT_EQ("20", Read(*stale, "value"));
    EXPECT_EQ(FIReference::kLive, stale->GetState());
    reference->OnDeleted();
    const auto deleted = Ref<FIReference>::Adopt(new FIReference(*reference));
    EXPECT_EQ("Node deleted", Read(*deleted, "value"));
    EXPECT_EQ("20", Read(*live, "value"));
}

TEST_F(Reference, unbound_copies_stand_where_the_other_does_and_listen_to_nobody) {
    ScriptNode twin("temperature");
    twin.Set("value", "30");
    LetNotify(false, true, true);
    const auto reference = Ref<FIReference>::Adopt(Make());
    const auto copy = reference->UnboundCopy();
    ASSERT_TRUE(copy);
    EXPECT_EQ(1, CountKind(node_, kNodeDeleted)) << "that of the other";
    ASSERT_TRUE(copy->GetIterator()->Up());
    FIValue name;
    copy->UnboundCopy()->GetName(name);
    EXPECT_EQ("unit", name.ToText()) << "an unbound one is copied where it stands";
    reference->GetName(name);
    EXPECT_EQ("temperature", name.ToText()) << "the position is shared with nobody";

    reference->MarkStale();
    unit_.RemoveChild("temperature");
    unit_.Link(twin);
    const auto found = reference->UnboundCopy();
    ASSERT_TRUE(found);
    EXPECT_EQ("30", Read(*found, "value")) << "a stale one finds its node first";
    reference->OnDeleted();
    EXPECT_FALSE(reference->UnboundCopy());
}

TEST_F(Reference, makes_an_element_on_its_node) {
    const auto reference = Ref<FIReference>::Adopt(Make());
    const std::unique_ptr<SavedStep> element(reference->MakeElement());
    ASSERT_TRUE(element);
    FIValue name;
    Ref<FIEntry>::Adopt(element->GetEntry())->GetName(name);
    EXPECT_EQ("temperature", name.ToText());
    EXPECT_EQ("temperature", element->Key().ToText());
}

}  // namespace

}  // namespace fixtop
