// SPDX-License-Identifier: Apache-2.0
// Places that are held, whose cursors are made again when a move wants them, beside places that
// were walked to and kept theirs: after any change of the case they answer and move alike.

#include <random>

#include "../casehost/case_builder.h"
#include "fixtop/reference.h"
#include "live_case.h"

namespace fixtop {

namespace {

class HeldPlace : public LiveCase {
 protected:
    struct Pair {
        NodeRef kept;
        NodeRef held;
    };
    using Move = bool (FIIteratorBase::*)();
    static constexpr Move kMoves[] = {
        &FIIteratorBase::Next, &FIIteratorBase::Prev,      &FIIteratorBase::First,
        &FIIteratorBase::Last, &FIIteratorBase::DownFirst, &FIIteratorBase::Up,
    };

    void SetUp() override {
        Open("demo");
        originals_ = host.ActiveLiveCase()->ToData().main.objects;
    }
    int OneOf(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
    // Of an object, or of one of its variables.
    Pair SomePlace() {
        NodeRef it = Model();
        it->SeekPath(FIValue("FlowSheetObjects"));
        it->Down(OneOf(3));
        it->Down(OneOf(30));
        if (OneOf(3) > 0) it->Down(OneOf(15));
        auto* held = static_cast<FIIterator&>(*it).CopyToHold();
        return {NodeRef::Adopt(it->Copy()), NodeRef::Adopt(held)};
    }
    void ChangeStructure() {
        casehost::Case& live = *host.ActiveLiveCase();
        host::Viewable* object = Main().Objects().EntryAt(OneOf(40));
        switch (OneOf(4)) {
            case 0:
                if (object) deleted_ += live.Delete(object);
                break;
            case 1:
                if (object) live.Rename(object, "Object " + std::to_string(OneOf(1000)));
                break;
            case 2:
                host.RunHostLoop();
                break;
            default:
                live.Add(&Main(), originals_[static_cast<std::size_t>(
                                      OneOf(static_cast<int>(originals_.size())))]);
                break;
        }
    }
    static std::string Told(FIIteratorBase& node, FIIteratorBase& other) {
        FIValue path;
        FIValue vars;
        node.GetPath(path);
        node.DumpVars(vars);
        return Shown(path) + " " + std::to_string(node.Depth()) + " " +
               std::to_string(node.AtFirst()) + std::to_string(node.AtLast()) +
               std::to_string(node.CanDescend()) + std::to_string(node.Compare(other)) +
               Read(node, "value") + Shown(vars);
    }
    // Each beside a copy of the first.
    void ExpectAlike(const Pair& places, int step) {
        const auto other = NodeRef::Adopt(places.kept->Copy());
        ASSERT_EQ(Told(*places.kept, *other), Told(*places.held, *other)) << step;
    }

    std::mt19937 random_{11};
    std::vector<casehost::ObjectData> originals_;
    long deleted_ = 0;
    long moved_ = 0;
};

TEST_F(HeldPlace, answers_and_moves_as_one_that_kept_its_cursors) {
    for (int step = 0; step < 3000; ++step) {
        Pair places = SomePlace();
        for (int changes = OneOf(4); changes > 0; --changes) ChangeStructure();
        // Sometimes the first use is a move, a copy or a thaw.
        if (OneOf(2) == 0) ExpectAlike(places, step);
        if (OneOf(4) == 0) {
            places = {NodeRef::Adopt(places.kept->Copy()), NodeRef::Adopt(places.held->Copy())};
        }
        if (OneOf(4) == 0) {
            for (const NodeRef& each : {places.kept, places.held}) each->Freeze();
            if (OneOf(2) == 0) ChangeStructure();
            ASSERT_EQ(places.kept->Thaw(), places.held->Thaw()) << step;
        }
        for (int moves = OneOf(5); moves > 0; --moves) {
            const Move move = kMoves[OneOf(std::size(kMoves))];
            const bool kept = ((*places.kept).*move)();
            ASSERT_EQ(kept, ((*places.held).*move)()) << step;
            moved_ += kept;
            ExpectAlike(places, step);
            if (OneOf(3) == 0) ChangeStructure();
        }
        ExpectAlike(places, step);
    }
    EXPECT_LE(100, deleted_);
    EXPECT_LE(1000, moved_);
}

TEST_F(HeldPlace, sees_what_is_set_above_it_by_whom_it_was_taken_from) {
    NodeRef it = Model();
    ASSERT_TRUE(it->SeekPath(FIValue("FlowSheetObjects.Streams.Raw Gas.Temperature")));
    const auto held = Ref<FIReferenceBase>::Adopt(it->MakeReference());
    const auto later = Ref<FIReferenceBase>::Adopt(it->MakeReference());
    ASSERT_TRUE(it->Up());
    it->SetVar(FIValue("of object"), FIValue("one"));
    ASSERT_TRUE(it->Up());
    it->SetVar(FIValue("of list"), FIValue("two"));
    for (const auto& each : {held, later}) {
        FIValue value;
        EXPECT_TRUE(each->GetVar(FIValue("of object"), value));
        EXPECT_EQ("one", Shown(value));
        EXPECT_TRUE(each->GetVar(FIValue("of list"), value));
        EXPECT_EQ("two", Shown(value));
    }
    EXPECT_TRUE(held->RemoveVar(FIValue("of list")));
    FIValue value;
    EXPECT_FALSE(it->GetVar(FIValue("of list"), value)) << "the level is theirs together";
}

// The level above is on another list by then.
TEST_F(HeldPlace, is_its_own_when_whom_it_was_taken_from_moves_aside_above) {
    NodeRef it = Model();
    ASSERT_TRUE(it->SeekPath(FIValue("FlowSheetObjects.Streams.Raw Gas")));
    const auto held = Ref<FIReferenceBase>::Adopt(it->MakeReference());
    ASSERT_TRUE(it->Up());
    ASSERT_TRUE(it->Next());
    ASSERT_TRUE(it->DownFirst());
    const auto other = Ref<FIReferenceBase>::Adopt(it->MakeReference());
    FIValue path;
    held->GetPath(path);
    EXPECT_EQ("appModel.FlowSheetObjects.Streams.Raw Gas", Shown(path));
    NodeRef back = NodeRef::Adopt(other->Copy());
    ASSERT_TRUE(back->Up());
    ASSERT_TRUE(back->Prev());
    EXPECT_EQ("Streams", NameAt(*back));
    back = NodeRef::Adopt(held->Copy());
    ASSERT_TRUE(back->Up());
    ASSERT_TRUE(back->Next());
    EXPECT_EQ("UnitOps", NameAt(*back));
}

}  // namespace

}  // namespace fixtop
