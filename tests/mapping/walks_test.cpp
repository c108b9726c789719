// SPDX-License-Identifier: Apache-2.0
// The walks over the elements of array attributes.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mapping/map_file/map_text.h"
#include "mapping/walks/filtered_walk.h"
#include "mapping/walks/function_walk.h"
#include "mapping/walks/path_walk.h"
#include "mapping_fixture.h"
#include "support/debug_capture.h"

namespace fixtop {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Root.unit.{a, b, odd, b, c}, each with a child "deep"; a reference stands at "unit".
class Walks : public testing::Test {
 protected:
    Walks() {
        Recorded::Reset();
        for (const char* name : {"a", "b", "odd", "b", "c"}) {
            ScriptNode& child = unit_.Add(name);
            child.Set("even", std::string(name) == "odd" ? 0 : 1);
            child.Add("deep");
        }
        reference_ = Stand();
    }
    ~Walks() override { reference_.Reset(); }

    Ref<FIReference> Stand() {
        auto it = root_.Iterate();
        EXPECT_TRUE(it->DownFirst());
        return ReferenceTo(*it);
    }
    std::unique_ptr<CDTPathIterator> Along(const std::string& path) {
        paths_.push_back(CompilePath(path));
        return std::make_unique<CDTPathIterator>(paths_.back().get(), *reference_);
    }
    std::string Now() const {
        return NameOf(*reference_) + "@" + std::to_string(reference_->Depth());
    }
    std::vector<std::string> Forward(CDTBase& walk) const {
        std::vector<std::string> names;
        for (bool on = walk.First(); on; on = walk.Next()) names.push_back(NameOf(*reference_));
        return names;
    }
    std::vector<std::string> Backward(CDTBase& walk) const {
        std::vector<std::string> names;
        EXPECT_FALSE(walk.Last());
        EXPECT_FALSE(walk.HasMore());
        while (walk.Prev()) names.push_back(NameOf(*reference_));
        return names;
    }
    static void Count(int count) {
        Recorded::Now().array = [count](FIIteratorBase* it, FIValue* subclass, int index) {
            if (index < 0) return count;
            if (index % 2 == 0) *subclass = Text("Class" + std::to_string(index));
            it->Down(index);
            return index;
        };
    }
    static std::vector<std::string>& Calls() { return Recorded::Now().calls; }

    ScriptNode root_{"Root"};
    ScriptNode& unit_{root_.Add("unit")};
    Ref<FIReference> reference_;
    std::vector<ParsedPath> paths_;
};

// ---- by array function

TEST_F(Walks, array_function_is_called_in_order) {
    Count(3);
    {
        CDTVariableIterator walk(RecordingArray, *reference_);
        EXPECT_TRUE(walk.HasMore());
        EXPECT_EQ(Now(), "a@2");
        EXPECT_TRUE(walk.Next());
        EXPECT_EQ(Now(), "b@2");
        EXPECT_TRUE(walk.Next());
        EXPECT_EQ(Now(), "odd@2");
        EXPECT_FALSE(walk.Next());
        EXPECT_FALSE(walk.HasMore());
        EXPECT_FALSE(walk.Next());
        EXPECT_THAT(Calls(), ElementsAre("-1@1", "0@1", "1@1", "2@1"))
            << "each from the first depth, with a fresh subclass";
    }
    EXPECT_EQ(Now(), "unit@1");
    EXPECT_EQ(Calls().size(), 4u);
}

TEST_F(Walks, subclass_is_set_for_each_element_and_cleared_behind_the_last) {
    Count(2);
    CDTVariableIterator walk(RecordingArray, *reference_);
    EXPECT_EQ(VariableOf(*reference_, "Subclass"), "Class0");
    EXPECT_TRUE(walk.Next());
    EXPECT_EQ(VariableOf(*reference_, "Subclass"), "(NULL)") << "the function named none";
    EXPECT_TRUE(walk.Prev());
    EXPECT_EQ(VariableOf(*reference_, "Subclass"), "Class0");
    EXPECT_FALSE(walk.Last());
    EXPECT_EQ(VariableOf(*reference_, "Subclass"), "(NULL)");
    EXPECT_TRUE(walk.First());
    EXPECT_EQ(VariableOf(*reference_, "Subclass"), "Class0");
    EXPECT_TRUE(walk.Next());
    EXPECT_FALSE(walk.Next());
    EXPECT_EQ(VariableOf(*reference_, "Subclass"), "(NULL)");
    EXPECT_THAT(Calls(), ElementsAre("-1@1", "0@1", "1@1", "0@1", "0@1", "1@1"))
        << "the end asks nothing";
}

TEST_F(Walks, subclass_of_a_former_element_does_not_stay) {
    Recorded::Now().array = [](FIIteratorBase*, FIValue* subclass, int index) {
        if (index == 0) *subclass = Text("First");
        return 2;
    };
    CDTVariableIterator walk(RecordingArray, *reference_);
    EXPECT_EQ(VariableOf(*reference_, "Subclass"), "First");
    EXPECT_TRUE(walk.Next());
    EXPECT_EQ(VariableOf(*reference_, "Subclass"), "(NULL)");
}

// A list of three whose elements have an early variable and two late ones.
constexpr const char* kLateNames[] = {"Kind", "Colour"};

int SelectEarly(FIIteratorBase* it, FIValue*, int index) {
    Recorded::Now().calls.push_back("select " + std::to_string(index));
    it->SetVarText("Early", FIValue::OfInt(index));
    return index;
}

void SetLate(FIIteratorBase* it, int index) {
    Recorded& now = Recorded::Now();
    now.calls.push_back("set " + std::to_string(index) + "@" + std::to_string(it->Depth()));
    if (now.scalar) now.scalar(it, index);
    it->SetVarText("Kind", FIValue::OfInt(index + 10));
    it->SetVarText("Colour", FIValue::OfInt(index + 20));
}

constexpr LateVariables kLate = {kLateNames, SelectEarly, SetLate};

class LateVariablesOfWalks : public Walks {
 protected:
    LateVariablesOfWalks() {
        Recorded::Now().array = [](FIIteratorBase*, FIValue*, int) { return 3; };
        walk_ = std::make_unique<CDTVariableIterator>(RecordingArray, *reference_,
                                                      ListLength::kByte, false, &kLate);
        Calls().clear();
    }
    ~LateVariablesOfWalks() override { walk_.reset(); }

    std::unique_ptr<CDTVariableIterator> walk_;
};

TEST_F(LateVariablesOfWalks, are_set_when_one_is_asked_for) {
    EXPECT_EQ(VariableOf(*reference_, "Early"), "0");
    EXPECT_EQ(VariableOf(*reference_, "Subclass"), "(NULL)");
    EXPECT_EQ(VariableOf(*reference_, "Kin"), "(unset)");
    EXPECT_THAT(Calls(), IsEmpty());
    EXPECT_EQ(VariableOf(*reference_, "Colour"), "20");
    EXPECT_EQ(VariableOf(*reference_, "Kind"), "10");
    EXPECT_THAT(Calls(), ElementsAre("set 0@1"));
    EXPECT_EQ(Now(), "unit@1");
}

TEST_F(LateVariablesOfWalks, are_those_of_the_present_element) {
    EXPECT_EQ(VariableOf(*reference_, "Kind"), "10");
    EXPECT_TRUE(walk_->Next());
    EXPECT_TRUE(walk_->Next());
    EXPECT_EQ(VariableOf(*reference_, "Early"), "2");
    EXPECT_EQ(VariableOf(*reference_, "Kind"), "12");
    EXPECT_THAT(Calls(), ElementsAre("set 0@1", "select 1", "select 2", "set 2@1"));
}

TEST_F(LateVariablesOfWalks, are_seen_from_below_and_by_copies) {
    const Ref<FIReference> copy = reference_->UnboundCopy();
    EXPECT_TRUE(copy->GetIterator()->SeekChild("a"));
    EXPECT_TRUE(walk_->Next());
    EXPECT_EQ(VariableOf(*copy, "Kind"), "10") << "the copy is of the first element";
    EXPECT_EQ(NameOf(*copy), "a");
    EXPECT_EQ(VariableOf(*reference_, "Kind"), "11");
    EXPECT_THAT(Calls(), ElementsAre("select 1", "set 0@1", "set 1@1"));
}

TEST_F(LateVariablesOfWalks, that_are_stored_or_removed_stay_so) {
    reference_->SetVar(Text("Kind"), Text("own"));
    EXPECT_EQ(VariableOf(*reference_, "Kind"), "own");
    EXPECT_EQ(VariableOf(*reference_, "Colour"), "20");
    EXPECT_TRUE(walk_->Next());
    EXPECT_TRUE(reference_->RemoveVarText("Colour"));
    EXPECT_EQ(VariableOf(*reference_, "Colour"), "(unset)");
    EXPECT_EQ(VariableOf(*reference_, "Kind"), "11");
}

TEST_F(LateVariablesOfWalks, are_in_the_table_of_variables) {
    FIValue table;
    reference_->DumpVars(table);
    EXPECT_THAT(table.ToText(), testing::HasSubstr("1\tKind\t\tINT\t\"10\""));
    EXPECT_THAT(table.ToText(), testing::HasSubstr("1\tColour\t\tINT\t\"20\""));
}

TEST_F(LateVariablesOfWalks, are_asked_for_again_when_they_could_not_be_found_out) {
    Recorded::Now().scalar = [](FIIteratorBase* it, int) -> bool {
        it->SetVarText("Kind", "half");
        throw std::bad_alloc();
    };
    EXPECT_EQ(VariableOf(*reference_, "Kind"), "(unset)");
    Recorded::Now().scalar = nullptr;
    EXPECT_EQ(VariableOf(*reference_, "Kind"), "10");
    EXPECT_EQ(VariableOf(*reference_, "Colour"), "20");
}

TEST_F(Walks, count_keeps_its_low_byte) {
    const std::pair<int, int> rows[] = {{0, 0},    {1, 1},     {255, 255},       {256, 0},
                                        {300, 44}, {512, 0},   {513, 1},         {-1, 255},
                                        {-256, 0}, {65536, 0}, {2147483647, 255}};
    for (const auto& [told, kept] : rows) {
        Recorded::Reset();
        Recorded::Now().array = [told = told](FIIteratorBase*, FIValue*, int) { return told; };
        CDTVariableIterator walk(RecordingArray, *reference_);
        int elements = 0;
        for (bool on = walk.First(); on; on = walk.Next()) ++elements;
        EXPECT_EQ(elements, kept) << told;
        if (kept == 0) {
            EXPECT_THAT(Calls(), ElementsAre("-1@1")) << "never with an index: " << told;
            EXPECT_FALSE(walk.HasMore());
        }
    }
}

// As Count, and the function takes kNextIndex.
void CountAndStep(int count) {
    Recorded::Now().array = [count](FIIteratorBase* it, FIValue* subclass, int index) {
        if (index == kCountIndex) return count;
        if (index == kNextIndex) return it->Next() ? kNextIndex : kCountIndex;
        *subclass = Text("Class" + std::to_string(index));
        it->Down(index);
        return index;
    };
}

TEST_F(Walks, function_that_steps_is_asked_for_its_first_element_alone) {
    for (const ListLength length : {ListLength::kWhole, ListLength::kByte}) {
        Recorded::Reset();
        CountAndStep(5);
        CDTVariableIterator walk(RecordingArray, *reference_, length, true);
        EXPECT_EQ(VariableOf(*reference_, "Subclass"), "Class0");
        EXPECT_THAT(Forward(walk), ElementsAre("a", "b", "odd", "b", "c"));
        EXPECT_THAT(Calls(), ElementsAre("-1@1", "0@1", "0@1", "-2@2", "-2@2", "-2@2", "-2@2"));
        EXPECT_THAT(Backward(walk), ElementsAre("c", "b", "odd", "b", "a"));
    }
}

TEST_F(Walks, subclass_of_a_former_element_does_not_stay_behind_a_step) {
    CountAndStep(2);
    CDTVariableIterator walk(RecordingArray, *reference_, ListLength::kWhole, true);
    EXPECT_TRUE(walk.Next());
    EXPECT_EQ(VariableOf(*reference_, "Subclass"), "(NULL)");
}

TEST_F(Walks, function_that_steps_goes_no_further_than_a_cut_list) {
    CountAndStep(258);
    CDTVariableIterator walk(RecordingArray, *reference_, ListLength::kByte, true);
    EXPECT_THAT(Forward(walk), ElementsAre("a", "b"));
    EXPECT_THAT(Calls(), ElementsAre("-1@1", "0@1", "0@1", "-2@2"));
}

// The list has lost elements since it was counted.
TEST_F(Walks, function_that_finds_no_next_element_is_asked_by_index) {
    CountAndStep(6);
    CDTVariableIterator walk(RecordingArray, *reference_, ListLength::kWhole, true);
    for (int i = 0; i < 4; ++i) EXPECT_TRUE(walk.Next());
    Calls().clear();
    walk.Next();
    EXPECT_THAT(Calls(), ElementsAre("-2@2", "5@1"));
    EXPECT_FALSE(walk.Next());
}

TEST_F(Walks, clone_steps_on_by_itself) {
    CountAndStep(3);
    CDTVariableIterator walk(RecordingArray, *reference_, ListLength::kWhole, true);
    const Ref<FIReference> other = Ref<FIReference>::Adopt(new FIReference(*reference_));
    auto clone = walk.Clone(*other);
    EXPECT_TRUE(clone->Next());
    EXPECT_EQ(NameOf(*other), "b");
    EXPECT_EQ(Now(), "a@2");
    EXPECT_TRUE(walk.Next());
    EXPECT_EQ(Now(), "b@2");
    EXPECT_TRUE(clone->Next());
    EXPECT_EQ(NameOf(*other), "odd");
}

TEST_F(Walks, array_function_back_and_forth) {
    Count(3);
    CDTVariableIterator walk(RecordingArray, *reference_);
    EXPECT_FALSE(walk.Prev());
    EXPECT_TRUE(walk.HasMore()) << "it stays on the first";
    EXPECT_EQ(Now(), "a@2");
    EXPECT_THAT(Forward(walk), ElementsAre("a", "b", "odd"));
    EXPECT_THAT(Backward(walk), ElementsAre("odd", "b", "a"));
}

TEST_F(Walks, variables_of_a_function_that_stays_are_seen) {
    Recorded::Now().array = [](FIIteratorBase* it, FIValue*, int index) {
        if (index >= 0) it->SetVarText("Elem", FIValue::OfInt(index));
        return 2;
    };
    CDTVariableIterator walk(RecordingArray, *reference_);
    EXPECT_EQ(VariableOf(*reference_, "Elem"), "0");
    EXPECT_TRUE(walk.Next());
    EXPECT_EQ(VariableOf(*reference_, "Elem"), "1");
    EXPECT_EQ(Now(), "unit@1");
}

TEST_F(Walks, function_that_goes_up_does_no_harm) {
    Recorded::Now().array = [](FIIteratorBase* it, FIValue*, int index) {
        if (index >= 0) it->Up();
        return 3;
    };
    CDTVariableIterator walk(RecordingArray, *reference_);
    EXPECT_TRUE(walk.Next());
    EXPECT_TRUE(walk.Next());
    EXPECT_EQ(Now(), "Root@0");
}

TEST_F(Walks, array_function_clone_goes_on_by_itself) {
    Count(3);
    CDTVariableIterator walk(RecordingArray, *reference_);
    walk.Next();
    Calls().clear();
    const Ref<FIReference> other = Ref<FIReference>::Adopt(new FIReference(*reference_));
    auto clone = walk.Clone(*other);
    EXPECT_THAT(Calls(), IsEmpty());
    EXPECT_EQ(NameOf(*other), "b");
    EXPECT_TRUE(clone->Next());
    EXPECT_EQ(NameOf(*other), "odd");
    EXPECT_EQ(Now(), "b@2");
    EXPECT_FALSE(clone->Next());
    EXPECT_TRUE(walk.HasMore());
    clone.reset();
    EXPECT_EQ(NameOf(*other), "unit");
    EXPECT_EQ(Now(), "b@2");
}

TEST_F(Walks, node_that_goes_away_ends_the_walk) {
    unit_.can_notify = true;
    reference_ = Stand();
    Recorded::Now().array = [](FIIteratorBase*, FIValue*, int) { return 3; };
    CDTVariableIterator walk(RecordingArray, *reference_);
    unit_.Notify(kNodeDeleted);
    EXPECT_FALSE(walk.Next());
    EXPECT_FALSE(walk.HasMore());
    EXPECT_FALSE(walk.First());
    EXPECT_FALSE(walk.Prev());
}

// ---- along a path

TEST_F(Walks, path_matches_are_the_elements) {
    const std::pair<const char*, std::vector<std::string>> rows[] = {
        {"*", {"a", "b", "odd", "b", "c"}},
        {"b", {"b", "b"}},
        {"c", {"c"}},
        {"none", {}},
        {"*[(even)=1]", {"a", "b", "b", "c"}},
        {"*[(even)=2]", {}},
        {"*.deep", {"deep"}},
        {"*.*", {"deep"}},
        {"c.*", {"deep"}},
        {"b#1", {"b"}},
        {"*#2", {"odd"}},
        {"*#9", {}},
        {"%name", {"b", "b"}},
        {"", {}},
        {"[(even)]", {}},
    };
    reference_->SetVar(Text("name"), Text("b"));
    for (const auto& [path, names] : rows) {
        {
            const auto walk = Along(path);
            EXPECT_FALSE(walk->HasMore()) << path << ": before First";
            EXPECT_FALSE(walk->Next()) << path;
            EXPECT_EQ(Forward(*walk), names) << path;
            EXPECT_FALSE(walk->HasMore()) << path;
            EXPECT_FALSE(walk->Next()) << path;
            EXPECT_EQ(Now(), "unit@1") << path << ": back at the end";
            EXPECT_EQ(Forward(*walk), names) << path << ": again";
            EXPECT_EQ(Backward(*walk), std::vector<std::string>(names.rbegin(), names.rend()))
                << path;
            walk->First();
        }
        EXPECT_EQ(Now(), "unit@1") << path << ": back when the walk ends";
    }
}

TEST_F(Walks, path_walk_begins_anew_from_the_middle) {
    const auto walk = Along("*");
    EXPECT_TRUE(walk->First());
    EXPECT_TRUE(walk->Next());
    EXPECT_TRUE(walk->First());
    EXPECT_EQ(Now(), "a@2");
    EXPECT_FALSE(walk->Prev());
    EXPECT_EQ(Now(), "a@2");
    EXPECT_TRUE(walk->HasMore());
    EXPECT_TRUE(walk->Next());
    EXPECT_TRUE(walk->Next());
    EXPECT_TRUE(walk->Prev());
    EXPECT_EQ(Now(), "b@2");
    EXPECT_TRUE(walk->Prev());
    EXPECT_EQ(Now(), "a@2");
    EXPECT_FALSE(walk->Prev());
}

TEST_F(Walks, path_walk_without_a_path_has_nothing) {
    CDTPathIterator walk(nullptr, *reference_);
    EXPECT_FALSE(walk.First());
    EXPECT_FALSE(walk.Next());
    EXPECT_FALSE(walk.Last());
    EXPECT_FALSE(walk.Prev());
    EXPECT_FALSE(walk.HasMore());
}

TEST_F(Walks, path_clone_goes_on_by_itself) {
    const auto walk = Along("*");
    walk->First();
    walk->Next();
    const Ref<FIReference> other = Ref<FIReference>::Adopt(new FIReference(*reference_));
    auto clone = walk->Clone(*other);
    EXPECT_TRUE(clone->HasMore());
    EXPECT_TRUE(clone->Next());
    EXPECT_EQ(NameOf(*other), "odd");
    EXPECT_EQ(Now(), "b@2");
    EXPECT_TRUE(clone->Prev());
    EXPECT_EQ(NameOf(*other), "b");
    clone.reset();
    EXPECT_EQ(NameOf(*other), "unit");
    EXPECT_EQ(Now(), "b@2");
}

TEST_F(Walks, nodes_of_one_key_are_all_reached) {
    for (const bool notify : {false, true}) {
        root_.can_notify = notify;
        reference_ = Stand();
        EXPECT_THAT(Forward(*Along("b")), ElementsAre("b", "b"));
    }
}

// ---- filtered

bool IsEven(FIIteratorBase* it, int) {
    FIValue even;
    it->GetAttribute(Text("even"), even);
    return even.AsInt() == 1;
}
bool ToDeep(FIIteratorBase* it, int move) {
    Recorded::Now().calls.push_back("move " + std::to_string(move != 0));
    return it->SeekPath(Text("deep"));
}
// Leaves a level behind when it refuses.
bool DeepOfB(FIIteratorBase* it, int) {
    FIValue name;
    it->GetName(name);
    return it->SeekPath(Text("deep")) && name.ToText() == "b";
}

TEST_F(Walks, filter_takes_what_its_function_accepts) {
    {
        CDTFilter walk(Along("*"), *reference_, CDTVariableFilter(IsEven));
        EXPECT_FALSE(walk.HasMore());
        EXPECT_FALSE(walk.Next());
        EXPECT_THAT(Forward(walk), ElementsAre("a", "b", "b", "c"));
        EXPECT_FALSE(walk.HasMore());
        EXPECT_FALSE(walk.Next());
        EXPECT_EQ(Now(), "unit@1");
        EXPECT_THAT(Backward(walk), ElementsAre("c", "b", "b", "a"));
        EXPECT_EQ(Now(), "a@2") << "no way before the first";
        EXPECT_TRUE(walk.HasMore());
    }
    EXPECT_EQ(Now(), "unit@1");
}

TEST_F(Walks, filter_may_lead_to_another_node) {
    CDTFilter walk(Along("*"), *reference_, CDTVariableFilter(ToDeep));
    EXPECT_THAT(Forward(walk), ElementsAre("deep", "deep", "deep", "deep", "deep"));
    EXPECT_THAT(Calls(), testing::Each("move 1"));
    EXPECT_THAT(Backward(walk), testing::SizeIs(5));
    EXPECT_TRUE(walk.First());
    EXPECT_EQ(Now(), "deep@3");
}

TEST_F(Walks, filter_that_refuses_deeper_down_is_brought_back) {
    CDTFilter walk(Along("*"), *reference_, CDTVariableFilter(DeepOfB));
    EXPECT_THAT(Forward(walk), ElementsAre("deep", "deep"));
    EXPECT_EQ(Now(), "unit@1");
}

TEST_F(Walks, chained_filters_must_all_accept) {
    const auto chained = std::make_shared<CDTVariableFilter>(ToDeep);
    CDTFilter walk(Along("*"), *reference_, CDTVariableFilter(IsEven, chained));
    EXPECT_THAT(Forward(walk), ElementsAre("deep", "deep", "deep", "deep"));
    EXPECT_EQ(Calls().size(), 4u) << "the chained one is asked for what passed the first";
    const auto refusing = std::make_shared<CDTVariableFilter>(IsEven);
    CDTFilter none(Along("*"), *reference_, CDTVariableFilter(ToDeep, refusing));
    EXPECT_THAT(Forward(none), IsEmpty()) << "asked where the first one led to";
}

TEST_F(Walks, filter_without_a_function_accepts_nothing) {
    CDTFilter walk(Along("*"), *reference_, CDTVariableFilter(nullptr));
    EXPECT_FALSE(walk.First());
    EXPECT_FALSE(walk.HasMore());
    EXPECT_EQ(Now(), "unit@1");
}

TEST_F(Walks, filter_clone_goes_on_by_itself) {
    CDTFilter walk(Along("*"), *reference_, CDTVariableFilter(DeepOfB));
    EXPECT_TRUE(walk.First());
    const Ref<FIReference> other = Ref<FIReference>::Adopt(new FIReference(*reference_));
    {
        const auto clone = walk.Clone(*other);
        EXPECT_TRUE(clone->HasMore());
        EXPECT_EQ(NameOf(*other), "deep");
        EXPECT_TRUE(clone->Next());
        EXPECT_FALSE(clone->Next());
        EXPECT_EQ(NameOf(*other), "unit");
        EXPECT_EQ(Now(), "deep@3");
    }
    EXPECT_EQ(Now(), "deep@3");
    EXPECT_TRUE(walk.Next());
    EXPECT_FALSE(walk.Next());
}

// ---- counted

TEST_F(Walks, instances_are_counted) {
    const auto alive = [](CountedClass counted) { return CountOf(counted).alive; };
    const int before = alive(CountedClass::CDTBase);
    {
        CDTVariableIterator variables(RecordingArray, *reference_);
        CDTFilter filter(Along("*"), *reference_, CDTVariableFilter(IsEven));
        EXPECT_EQ(alive(CountedClass::CDTBase), before + 3);
        EXPECT_EQ(alive(CountedClass::CDTVariableIterator), 1);
        EXPECT_EQ(alive(CountedClass::CDTFilter), 1);
        EXPECT_EQ(alive(CountedClass::CDTVariableFilter), 1);
        const DebugCapture capture;
        ReportInstances(CountGroup::kMapping, 2);
        const int total = CountOf(CountedClass::CDTVariableIterator).total;
        EXPECT_THAT(DebugCapture::Pieces(),
                    testing::Contains("    CDTVariableIterator: count: 1, total: " +
                                      std::to_string(total) + "\n"));
    }
    EXPECT_EQ(alive(CountedClass::CDTBase), before);
    EXPECT_EQ(alive(CountedClass::CDTVariableFilter), 0);
}

}  // namespace

}  // namespace fixtop
