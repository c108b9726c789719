// SPDX-License-Identifier: Apache-2.0
// Long random sequences of what clients and cases do to watched collections, against a plain list
// of what the items should be.

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <random>

#include "collection/selected_tree.h"

namespace fixtop {

namespace {

constexpr int kSteps = 4000;

class RandomCollection : public ::testing::Test {
 protected:
    static constexpr int kStreams = 4;
    static constexpr int kVariables = 5;

    RandomCollection() {
        for (int s = 0; s < kStreams; ++s) {
            ScriptNode& stream = top_.Add("s" + std::to_string(s));
            for (int v = 0; v < kVariables; ++v) {
                ScriptNode& variable = stream.Add("v" + std::to_string(v));
                variable.Set("value", 10 * s + v);
                variable.can_notify = true;
            }
        }
    }
    ~RandomCollection() override { items_.Reset(); }

    int Below(int count) { return static_cast<int>(random_() % count); }
    // The root, a stream or a variable.
    std::string AnyPath() {
        const std::string stream = "s" + std::to_string(Below(kStreams));
        switch (Below(8)) {
            case 0:
                return "";
            case 1:
                return stream;
            default:
                return stream + ".v" + std::to_string(Below(kVariables));
        }
    }
    ScriptNode& AnyVariable() {
        return *top_.children[Below(kStreams)]->children[Below(kVariables)];
    }

    void Add() {
        const std::string path = AnyPath();
        const auto it = top_.Iterate();
        ASSERT_TRUE(path.empty() || it->SeekPath(Text(path)));
        ASSERT_TRUE(items_->Add(*it));
        if (std::find(model_.begin(), model_.end(), path) == model_.end()) model_.push_back(path);
    }
    void Remove() {
        const int at = Below(kStreams * kVariables);
        const bool is_there = at < static_cast<int>(model_.size());
        ASSERT_EQ(is_there, items_->RemoveAt(at));
        if (is_there) model_.erase(model_.begin() + at);
    }
    void Clear() {
        items_->Clear();
        model_.clear();
    }
    void Reload() {
        FIValue text;
        items_->ToXml(text);
        ASSERT_TRUE(items_->Load(text.CStr(), *top_.Iterate()));
    }
    void Replace() {
        items_ = Collection::Make();
        model_.clear();
    }
    void Read() {
        std::vector<FIValue> values(items_->Count());
        items_->GetValues(Text("value"), values.data());
    }
    void StartWatching() { items_->StartWatching(); }
    void StopWatching() { items_->StopWatching(); }
    void Subscribe() {
        int& listener = listeners_[Below(2)];
        items_->Subscribe(this, &listener, Told);
    }
    void Unsubscribe() { items_->Unsubscribe(this, &listeners_[Below(2)]); }
    // Where the items stand is the iterator's own business.
    void MoveIterator() {
        if (!it_ || it_->Collection() != items_.Get() || Below(4) == 0) {
            it_ = Walk::Adopt(items_->MakeIterator());
        }
        const bool moved = Below(3) == 0 ? it_->Previous() : it_->Next();
        ASSERT_EQ(moved, it_->IsValid());
        if (!moved) return;
        ASSERT_LE(0, items_->IndexOf(it_->Item()));
        FIValue out;
        it_->GetAttribute(Text("value"), out);
        it_->SetAttribute(Text("value"), FIValue::OfInt(Below(100)), 0, out);
    }
    // Those that may be done within a subscriber's call.
    void Change() {
        using Action = void (RandomCollection::*)();
        struct Chance {
            int weight;
            Action act;
        };
        static constexpr Chance chances[] = {
            {40, &RandomCollection::Add},           {8, &RandomCollection::Remove},
            {10, &RandomCollection::Read},          {10, &RandomCollection::MoveIterator},
            {10, &RandomCollection::StartWatching}, {2, &RandomCollection::StopWatching},
            {10, &RandomCollection::Subscribe},     {2, &RandomCollection::Unsubscribe},
            {4, &RandomCollection::Reload},         {1, &RandomCollection::Clear},
            {1, &RandomCollection::Replace},
        };
        int left = Below(98);
        const Chance* chance = chances;
        for (; left >= chance->weight; ++chance) left -= chance->weight;
        (this->*chance->act)();
    }
    static void Told(void* owner, void*, FICollectionElement* item, int kind) {
        auto* self = static_cast<RandomCollection*>(owner);
        ++self->told_;
        EXPECT_TRUE(self->told_of_ == kind) << kind;
        EXPECT_TRUE(item->IsItem());
        if (self->Below(3) == 0 && self->depth_ < 3) {
            ++self->depth_;
            self->Change();
            --self->depth_;
        }
    }
    void Notify() {
        told_of_ = Below(3);
        AnyVariable().Notify(told_of_);
    }
    void Compare() {
        ASSERT_EQ(static_cast<int>(model_.size()), items_->Count());
        Words paths;
        FIValue path;
        const auto it = Walk::Adopt(items_->MakeIterator());
        while (it->Next()) {
            it->GetPath(path);
            paths.push_back(path.ToText());
        }
        ASSERT_EQ(model_, paths);
    }

    ScriptNode top_{"Top"};
    Collected items_ = Collection::Make();
    Walk it_;
    Words model_;
    std::mt19937 random_;
    int listeners_[2] = {};
    int told_ = 0;
    int told_of_ = 0;
    int depth_ = 0;
};

TEST_F(RandomCollection, is_what_was_done_to_it) {
    const char* steps = std::getenv("FIXTOP_COLLECTION_STEPS");
    const int count = steps ? std::atoi(steps) : kSteps;
    for (int step = 0; step < count; ++step) {
        if (Below(3) == 0) {
            Notify();
        } else {
            Change();
        }
        if (Below(5) == 0) Compare();
        if (HasFatalFailure()) FAIL() << "step " << step;
    }
    EXPECT_LT(count / 100, told_);
    const int alive = CountOf(CountedClass::FICollectionBase).alive;
    it_.Reset();
    items_.Reset();
    EXPECT_LT(CountOf(CountedClass::FICollectionBase).alive, alive);
    for (ScriptNode* stream : top_.children) {
        for (ScriptNode* variable : stream->children) {
            EXPECT_TRUE(variable->subscriptions.empty());
        }
    }
}

}  // namespace

}  // namespace fixtop
