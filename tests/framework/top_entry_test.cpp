// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "framework/iterator/iterator.h"
#include "framework/nodes/empties.h"
#include "framework/nodes/subscribers.h"
#include "framework/nodes/top_entry.h"
#include "platform/computer_name.h"
#include "support/scripted_tree.h"

namespace fixtop {

namespace {

struct Listener {
    std::vector<int> kinds;
    FIEntry* leaves = nullptr;
    Listener* takes_out = nullptr;

    static void Told(void* owner, int kind) {
        auto* self = static_cast<Listener*>(owner);
        self->kinds.push_back(kind);
        if (self->takes_out) self->leaves->Unsubscribe(self->takes_out, kind);
    }
};

class TopEntry : public ::testing::Test {
 protected:
    TopEntry()
        : model_("model"),
          context_(Ref<FIContext>::Adopt(model_.Entry()->GetContext())),
          top_(Ref<FITopEntry>::Share(new FITopEntry(context_.Get(), &notify_, nullptr))) {
        model_.Add("appModel");
    }

    std::string Read(const char* name) {
        FIValue value;
        top_->GetAttribute(Text(name), value);
        return value.IsNull() ? "(NULL)" : value.ToText();
    }

    ScriptNode model_;
    FINotify notify_ = nullptr;
    Ref<FIContext> context_;
    Ref<FITopEntry> top_;
};

TEST_F(TopEntry, shows_three_attributes) {
    EXPECT_EQ("Top", Read("id"));
    EXPECT_EQ("TopNode", Read("type"));
    EXPECT_EQ(ComputerName(), Read("server"));
    EXPECT_LE(Read("server").size(), 15u);
    EXPECT_EQ("(NULL)", Read("value"));
    EXPECT_EQ("(NULL)", Read(""));
    FIValue name;
    top_->GetName(name);
    EXPECT_EQ("Top", name.ToText());
    std::vector<std::string> rows;
    for (const auto& row : FITopEntry::AttributeRows()) {
        rows.push_back(row.name);
        EXPECT_EQ(1, row.kind) << row.name;
        EXPECT_EQ(nullptr, row.available) << row.name;
    }
    EXPECT_EQ((std::vector<std::string>{"id", "type", "server"}), rows);
}

TEST_F(TopEntry, counts_from_zero) {
    auto* entry = new FITopEntry(context_.Get(), nullptr, nullptr);
    EXPECT_EQ(1, entry->AddRef());
    const auto attributes = Ref<FIAttributeSource>::Adopt(entry->GetAttributeSource());
    EXPECT_EQ(3, entry->AddRef()) << "its interfaces share the count";
    EXPECT_EQ(2, entry->Release());
    EXPECT_EQ(1, entry->Release());
}

TEST_F(TopEntry, hands_out_the_inner_context_and_the_single_child) {
    EXPECT_EQ(context_.Get(), Ref<FIContext>::Adopt(top_->GetContext()).Get());
    const auto single = Ref<FIContext>::Adopt(top_->MakeSingleChildContext());
    for (int kind : {int{kChildCursor}, 0, 3, -1}) {
        const auto cursor = Ref<FICursorBase>::Adopt(single->MakeCursor(kind));
        const auto child = Ref<FIEntry>::Adopt(cursor->GetEntry());
        ASSERT_NE(nullptr, child.Get()) << kind;
        EXPECT_EQ(context_.Get(), Ref<FIContext>::Adopt(child->GetContext()).Get()) << kind;
    }
    EXPECT_EQ(EmptyCursor(), single->MakeCursor(kKeyCursor));
}

TEST_F(TopEntry, without_a_service_none_is_lent) {
    for (int kind : {1, 2, 3}) {
        void* service = this;
        EXPECT_FALSE(top_->QueryService(kind, &service)) << kind;
        EXPECT_EQ(nullptr, service) << kind;
    }
}

TEST_F(TopEntry, without_a_notify_slot_subscribers_are_refused) {
    const auto mute = Ref<FITopEntry>::Share(new FITopEntry(context_.Get(), nullptr, nullptr));
    Listener listener;
    EXPECT_FALSE(mute->Subscribe(&listener, kValueChanged, &Listener::Told));
    notify_(0);
    EXPECT_TRUE(listener.kinds.empty());
    ASSERT_TRUE(top_->Subscribe(&listener, kValueChanged, &Listener::Told));
    EXPECT_FALSE(mute->Unsubscribe(&listener, kValueChanged)) << "though the list has it";
    EXPECT_TRUE(top_->Unsubscribe(&listener, kValueChanged));
}

TEST_F(TopEntry, changes_reach_kinds_1_and_2_and_deletions_kind_0) {
    ASSERT_NE(nullptr, notify_);
    Listener listener;
    for (int kind : {kNodeDeleted, kValueChanged, kStructureChanged}) {
        ASSERT_TRUE(top_->Subscribe(&listener, kind, &Listener::Told));
    }
    notify_(0);
    EXPECT_EQ((std::vector<int>{1, 2}), listener.kinds);
    listener.kinds.clear();
    notify_(1);
    EXPECT_EQ((std::vector<int>{0}), listener.kinds);
    listener.kinds.clear();
    notify_(-7);
    EXPECT_EQ((std::vector<int>{0}), listener.kinds);
    for (int kind : {kNodeDeleted, kValueChanged, kStructureChanged}) {
        EXPECT_TRUE(top_->Unsubscribe(&listener, kind));
        EXPECT_FALSE(top_->Unsubscribe(&listener, kind));
    }
    notify_(0);
    EXPECT_EQ(1u, listener.kinds.size());
}

TEST_F(TopEntry, subscribers_are_told_in_order_and_leave_one_record_at_a_time) {
    static std::vector<const void*> told;
    told.clear();
    const auto note = [](void* owner, int) { told.push_back(owner); };
    int a = 0;
    int b = 0;
    for (int* owner : {&a, &b, &a}) ASSERT_TRUE(top_->Subscribe(owner, kValueChanged, note));
    notify_(0);
    EXPECT_EQ((std::vector<const void*>{&a, &b, &a}), told);
    EXPECT_FALSE(top_->Unsubscribe(&a, kStructureChanged)) << "of this kind there is none";
    ASSERT_TRUE(top_->Unsubscribe(&a, kValueChanged));
    told.clear();
    notify_(0);
    EXPECT_EQ((std::vector<const void*>{&b, &a}), told) << "the first record left";
    EXPECT_TRUE(top_->Unsubscribe(&a, kValueChanged));
    EXPECT_TRUE(top_->Unsubscribe(&b, kValueChanged));
}

TEST_F(TopEntry, tops_share_their_subscribers) {
    FINotify other_notify = nullptr;
    const auto other =
        Ref<FITopEntry>::Share(new FITopEntry(context_.Get(), &other_notify, nullptr));
    Listener listener;
    ASSERT_TRUE(top_->Subscribe(&listener, kValueChanged, &Listener::Told));
    other_notify(0);
    EXPECT_EQ(1u, listener.kinds.size());
    EXPECT_TRUE(other->Unsubscribe(&listener, kValueChanged));
}

TEST_F(TopEntry, who_leaves_inside_a_round_is_skipped_for_its_rest) {
    Listener first;
    Listener second;
    first.leaves = top_.Get();
    first.takes_out = &second;
    ASSERT_TRUE(top_->Subscribe(&first, kValueChanged, &Listener::Told));
    ASSERT_TRUE(top_->Subscribe(&second, kValueChanged, &Listener::Told));
    notify_(0);
    EXPECT_EQ(1u, first.kinds.size());
    EXPECT_TRUE(second.kinds.empty());
    EXPECT_FALSE(top_->Unsubscribe(&second, kValueChanged));
    first.takes_out = &first;
    notify_(0);
    EXPECT_EQ(2u, first.kinds.size());
    notify_(0);
    EXPECT_EQ(2u, first.kinds.size());
    EXPECT_FALSE(top_->Unsubscribe(&first, kValueChanged));
}

TEST(SubscriberList, clear_inside_a_round_ends_the_calls) {
    static SubscriberList* list = nullptr;
    SubscriberList own;
    list = &own;
    int calls = 0;
    const auto clear = [](void* owner, int) {
        ++*static_cast<int*>(owner);
        list->Clear();
    };
    own.Add(&calls, kValueChanged, clear);
    own.Add(&calls, kValueChanged, clear);
    own.Dispatch(0);
    EXPECT_EQ(1, calls);
    EXPECT_TRUE(own.IsEmpty());
}

TEST(SubscriberList, who_leaves_inside_a_round_leaves_once_and_is_gone_after_it) {
    static SubscriberList* list = nullptr;
    SubscriberList own;
    list = &own;
    std::vector<bool> left;
    const auto leave = [](void* owner, int kind) {
        auto& answers = *static_cast<std::vector<bool>*>(owner);
        for (int i = 0; i < 3; ++i) answers.push_back(list->Remove(owner, kind));
    };
    own.Add(&left, kValueChanged, leave);
    own.Add(&left, kValueChanged, leave);
    own.Dispatch(0);
    EXPECT_EQ((std::vector<bool>{true, true, false}), left) << "the second record is not called";
    EXPECT_TRUE(own.IsEmpty());
}

TEST(SubscriberList, who_joins_inside_a_round_waits_for_the_next) {
    static SubscriberList* list = nullptr;
    SubscriberList own;
    list = &own;
    int calls = 0;
    own.Add(&calls, kValueChanged, [](void* owner, int kind) {
        ++*static_cast<int*>(owner);
        list->Remove(owner, kind);
        list->Add(owner, kind, [](void* joined, int) { ++*static_cast<int*>(joined); });
    });
    own.Dispatch(0);
    EXPECT_EQ(1, calls);
    own.Dispatch(0);
    EXPECT_EQ(2, calls);
}

// Beside a plain list of who is there.
TEST(SubscriberList, tells_whoever_is_there_in_the_order_of_coming) {
    struct Known {
        void* owner;
        int kind;
        bool operator==(const Known&) const = default;
    };
    static std::vector<Known> told;
    const auto note = [](void* owner, int kind) { told.push_back({owner, kind}); };
    std::vector<int> owners(60);
    std::vector<Known> there;
    SubscriberList list;
    std::minstd_rand random(7);
    for (int step = 0; step < 20000; ++step) {
        // In turns mostly coming, mostly leaving.
        const bool comes = random() % 8 < (step / 500 % 2 ? 2u : 6u);
        const Known who{&owners[random() % owners.size()], static_cast<int>(1 + random() % 2)};
        const auto first = std::ranges::find(there, who);
        if (comes) {
            list.Add(who.owner, who.kind, note);
            there.push_back(who);
        } else {
            ASSERT_EQ(first != there.end(), list.Remove(who.owner, who.kind)) << step;
            if (first != there.end()) there.erase(first);
        }
        ASSERT_EQ(there.empty(), list.IsEmpty()) << step;
        if (step % 97 != 0) continue;
        told.clear();
        list.Dispatch(0);
        ASSERT_EQ(there, told) << step;
    }
}

}  // namespace

}  // namespace fixtop
