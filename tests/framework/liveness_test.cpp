// SPDX-License-Identifier: Apache-2.0
#include "framework/nodes/liveness.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "fixtop/ref.h"

namespace fixtop {

namespace {

// A case that the test deletes, without a host.
class TestLife final : public Liveness {
 public:
    explicit TestLife(std::string& log, const std::uint64_t* revision = nullptr)
        : Liveness(revision), log_(log) {}
    ~TestLife() override { log_ += "freed "; }
    bool IsThere() const override { return there; }
    void OnFirstWatcher() override { log_ += "first "; }
    void OnNoWatcher() override { log_ += "none "; }
    void OnEnded(bool told) override { log_ += told ? "ended-told " : "ended "; }

    bool there = true;

 private:
    std::string& log_;
};

struct Watching : Liveness::Watcher {
    Watching(const char* own_name, std::string& own_log) : name(own_name), log(own_log) {}
    void OnEnd() override { Tell("end"); }
    void OnChange() override { Tell("change"); }
    void OnForgotten() override { Tell("forgotten"); }
    void Tell(const char* what) {
        log += name + ":" + what + " ";
        if (act) act();
    }

    std::string name;
    std::string& log;
    std::function<void()> act;
};

class LivenessRecord : public testing::Test {
 protected:
    std::string Taken() { return std::exchange(log, ""); }

    std::string log;
    std::uint64_t revision = 7;
    TestLife* life = new TestLife(log, &revision);
    Ref<Liveness> held = Ref<Liveness>::Share(life);
    Watching a{"a", log};
    Watching b{"b", log};
    Watching c{"c", log};
};

TEST_F(LivenessRecord, follows_the_revision_of_the_host) {
    const std::uint64_t seen = life->Revision();
    EXPECT_TRUE(life->IsCurrent(seen));
    ++revision;
    EXPECT_FALSE(life->IsCurrent(seen));
    EXPECT_TRUE(life->IsCurrent(life->Revision()));
    EXPECT_FALSE(life->IsCurrent(0)) << "0 is never current";
}

TEST_F(LivenessRecord, without_a_revision_counts_what_is_told) {
    const Ref<Liveness> own = Ref<Liveness>::Share(new TestLife(log));
    const std::uint64_t seen = own->Revision();
    EXPECT_NE(0u, seen);
    own->BeginChange();
    EXPECT_FALSE(own->IsCurrent(seen));
}

TEST_F(LivenessRecord, that_has_ended_is_never_current_again) {
    const std::uint64_t seen = life->Revision();
    life->End();
    EXPECT_TRUE(life->HasEnded());
    EXPECT_FALSE(life->IsCurrent(seen));
    EXPECT_FALSE(life->IsCurrent(0));
    ++revision;
    EXPECT_FALSE(life->IsCurrent(revision));
    EXPECT_FALSE(life->Look());
    EXPECT_EQ("ended-told ", Taken());
    life->End();
    life->EndUntold();
    EXPECT_EQ("", Taken()) << "once";
}

TEST_F(LivenessRecord, finds_out_by_looking_and_tells_nobody) {
    life->Watch(a);
    EXPECT_TRUE(life->Look());
    life->there = false;
    EXPECT_FALSE(life->Look());
    EXPECT_EQ("first ended ", Taken());
    EXPECT_TRUE(life->HasEnded());
    life->Leave(a);
    EXPECT_EQ("", Taken()) << "there is nothing to take out any more";
}

TEST_F(LivenessRecord, tells_first_and_last_watcher_but_quiet_ones) {
    life->WatchQuietly(a);
    EXPECT_EQ("", Taken());
    life->Watch(b);
    life->Watch(b);
    life->Watch(c);
    EXPECT_EQ("first ", Taken());
    life->Leave(b);
    life->Leave(b);
    EXPECT_EQ("", Taken());
    life->Leave(c);
    EXPECT_EQ("none ", Taken());
    life->End();
    EXPECT_EQ("ended-told a:end ", Taken()) << "the quiet one hears with the others";
}

TEST_F(LivenessRecord, the_end_is_told_once_to_each_who_has_left_by_then) {
    life->Watch(a);
    life->Watch(b);
    Taken();
    a.act = [&] { life->Watch(a); };
    life->End();
    EXPECT_EQ("ended-told b:end a:end ", Taken());
    life->TellChange();
    life->TellForgotten();
    EXPECT_EQ("", Taken()) << "nobody can come back";
}

TEST_F(LivenessRecord, the_record_survives_who_lets_go_of_it_at_the_end) {
    life->Watch(a);
    Taken();
    a.act = [&] { held.Reset(); };
    life->End();
    EXPECT_EQ("ended-told a:end freed ", Taken());
}

TEST_F(LivenessRecord, watchers_that_leave_in_a_round_are_not_told) {
    for (Watching* each : {&a, &b, &c}) life->Watch(*each);
    Taken();
    // The last who came is told first.
    c.act = [&] {
        life->Leave(b);
        life->Leave(c);
    };
    life->BeginChange();
    life->TellChange();
    EXPECT_EQ("c:change a:change ", Taken());
    c.act = nullptr;
    life->Watch(c);
    life->BeginChange();
    life->TellChange();
    EXPECT_EQ("c:change a:change ", Taken());
}

TEST_F(LivenessRecord, watchers_that_come_in_a_round_wait_for_the_next) {
    life->Watch(a);
    Taken();
    a.act = [&] { life->Watch(b); };
    life->BeginChange();
    life->TellChange();
    EXPECT_EQ("a:change ", Taken());
    life->BeginChange();
    life->TellChange();
    EXPECT_EQ("b:change a:change ", Taken());
}

TEST_F(LivenessRecord, a_change_inside_a_change_is_told_once) {
    life->Watch(a);
    life->Watch(b);
    Taken();
    bool first = true;
    b.act = [&] {
        if (!std::exchange(first, false)) return;
        life->BeginChange();
        life->TellChange();
    };
    life->BeginChange();
    life->TellChange();
    EXPECT_EQ("b:change b:change a:change ", Taken()) << "the outer round finds everybody told";
}

TEST_F(LivenessRecord, who_heard_of_a_change_is_not_told_of_it_again) {
    life->Watch(a);
    life->Watch(b);
    Taken();
    life->BeginChange();
    life->Heard(a);
    life->TellChange();
    EXPECT_EQ("b:change ", Taken());
    life->BeginChange();
    life->TellChange();
    EXPECT_EQ("b:change a:change ", Taken()) << "of the next one it is";
}

TEST_F(LivenessRecord, forgetting_reaches_everybody) {
    life->Watch(a);
    life->WatchQuietly(b);
    Taken();
    life->TellForgotten();
    EXPECT_EQ("b:forgotten a:forgotten ", Taken());
}

}  // namespace

}  // namespace fixtop
