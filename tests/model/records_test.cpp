// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include "diagnostics/instance_counts.h"
#include "model/attribute_walker.h"
#include "model/class_library.h"
#include "support/log_lines.h"
#include "support/temporary_folder.h"
#include "xml/message_text.h"

namespace fixtop {

namespace {

using testing::ElementsAre;

static_assert(std::has_virtual_destructor_v<CCDMNamedObject>);
static_assert(std::has_virtual_destructor_v<CCDMTranslatorRecord>);
static_assert(std::is_base_of_v<CCDMNamedObject, CCDMClass>);
static_assert(std::is_base_of_v<CCDMNamedObject, CCDMAttribute>);
static_assert(std::is_base_of_v<CCDMNamedObject, CCDMEnumeration>);
static_assert(std::is_base_of_v<CCDMNamedObject, CCDMEnumMap>);

// Adds a class with superclasses and attributes.
CCDMClass& Define(CCDMClassLibrary& library, const char* name, std::set<std::string> superclasses,
                  const std::vector<std::string>& attributes) {
    CCDMClass& record = *library.GetOrCreateClass(name);
    record.superclasses = std::move(superclasses);
    for (const std::string& attribute : attributes) {
        CCDMAttribute* created = record.GetOrCreateAttribute(attribute);
        created->owner = &record;
        record.attributes.push_back(created);
    }
    return record;
}

std::string NameOf(const CCDMAttribute* attribute) {
    return attribute == nullptr ? "none" : attribute->owner->name + "." + attribute->name;
}

std::vector<std::string> Forward(const CCDMClass& record) {
    std::vector<std::string> names;
    CCDMAttributeWalker walker(record);
    for (bool on = walker.First(); on; on = walker.Next())
        names.push_back(NameOf(walker.Current()));
    EXPECT_EQ(walker.Current(), nullptr);
    return names;
}

std::vector<std::string> Backward(const CCDMClass& record) {
    std::vector<std::string> names;
    CCDMAttributeWalker walker(record);
    for (bool on = walker.Last(); on; on = walker.Prev()) names.push_back(NameOf(walker.Current()));
    EXPECT_EQ(walker.Current(), nullptr);
    return names;
}

TEST(AttrType, has_fixed_numbers_and_texts) {
    const char* texts[] = {"None", "Real", "String", "Integer", "Boolean", "Enumeration", "Object"};
    for (int number = 0; number < 7; ++number) {
        EXPECT_EQ(static_cast<int>(AttrTypeFromText(texts[number])), number) << texts[number];
        EXPECT_STREQ(AttrTypeText(static_cast<CCDMAttrType>(number)), texts[number]);
    }
    for (const char* other : {"", "Float", "real", "Real ", "Objects"}) {
        EXPECT_EQ(AttrTypeFromText(other), CCDMAttrType::kNone) << other;
    }
    EXPECT_STREQ(AttrTypeText(static_cast<CCDMAttrType>(7)), "None");
    EXPECT_STREQ(AttrTypeText(static_cast<CCDMAttrType>(-1)), "None");
}

TEST(Branch, has_fixed_numbers_and_texts) {
    EXPECT_EQ(static_cast<int>(BranchFromText("Both")), 1);
    EXPECT_EQ(static_cast<int>(BranchFromText("Calc")), 2);
    EXPECT_EQ(static_cast<int>(BranchFromText("Spec")), 3);
    for (const char* other : {"", "both", "Spec ", "Neither"}) {
        EXPECT_EQ(static_cast<int>(BranchFromText(other)), 0) << other;
    }
}

TEST(EnumMap, serves_both_directions) {
    CCDMEnumMap map("Hovex");
    map.entries = {{"Liq", "Liquid"}, {"Vap", "Vapor"}, {"Vapour", "Vapor"}};
    EXPECT_EQ(map.name, "Hovex");
    EXPECT_EQ(*map.NeutralName("Vapour"), "Vapor");
    EXPECT_EQ(map.NeutralName("Vapor"), nullptr);
    EXPECT_EQ(*map.ApplicationName("Vapor"), "Vap") << "the first in the order of the keys";
    EXPECT_EQ(map.ApplicationName("Liq"), nullptr);
}

TEST(ClassLibrary, starts_empty) {
    int first = 0;
    int second = 0;
    const CCDMClassLibrary none;
    EXPECT_EQ(none.unitResourceModule, nullptr);
    EXPECT_EQ(none.classResourceModule, nullptr);
    EXPECT_EQ(none.defaultBranch, CCDMBranch::kBoth);
    EXPECT_EQ(none.semanticModule, nullptr);
    EXPECT_EQ(none.topNodeFunction, nullptr);
    EXPECT_FALSE(none.units.Initialized());
    const CCDMClassLibrary one(&first);
    EXPECT_EQ(one.unitResourceModule, &first);
    EXPECT_EQ(one.classResourceModule, &first);
    const CCDMClassLibrary both(&first, &second);
    EXPECT_EQ(both.unitResourceModule, &first);
    EXPECT_EQ(both.classResourceModule, &second);
}

TEST(ClassLibrary, find_never_creates_and_create_finds_again) {
    CCDMClassLibrary library;
    EXPECT_EQ(library.FindClass("A"), nullptr);
    EXPECT_EQ(library.FindEnumeration("A"), nullptr);
    CCDMClass* record = library.GetOrCreateClass("A");
    EXPECT_EQ(library.GetOrCreateClass("A"), record);
    EXPECT_EQ(library.FindClass("A"), record);
    EXPECT_EQ(library.FindClass("a"), nullptr) << "case counts";
    EXPECT_EQ(record->library, &library);
    CCDMEnumeration* enumeration = library.GetOrCreateEnumeration("A");
    EXPECT_EQ(library.GetOrCreateEnumeration("A"), enumeration);
    EXPECT_EQ(library.FindEnumeration("A"), enumeration);
    EXPECT_FALSE(enumeration->isClosed);
    EXPECT_EQ(record->FindAttribute("x"), nullptr);
    CCDMAttribute* attribute = record->GetOrCreateAttribute("x");
    EXPECT_EQ(record->GetOrCreateAttribute("x"), attribute);
    EXPECT_EQ(record->FindAttribute("x"), attribute);
    EXPECT_TRUE(record->attributes.empty()) << "listed by the reader";
}

TEST(ClassLibrary, keys_are_in_the_order_of_their_bytes) {
    CCDMClassLibrary library;
    for (const char* name : {"b", "ab", "a", "\xC3\xA9", "B"}) library.GetOrCreateClass(name);
    std::vector<std::string> order;
    for (const auto& [name, record] : library.classes) order.push_back(name);
    EXPECT_THAT(order, ElementsAre("B", "a", "ab", "b", "\xC3\xA9"));
}

struct CountingTranslator final : CCDMTranslatorRecord {
    explicit CountingTranslator(int& count) : alive(count) { ++alive; }
    ~CountingTranslator() override { --alive; }
    int& alive;
};

TEST(ClassLibrary, ends_its_records) {
    const int classes = CountOf(CountedClass::CCDMClass).alive;
    const int attributes = CountOf(CountedClass::CCDMAttribute).alive;
    const int libraries = CountOf(CountedClass::CCDMClassLibrary).alive;
    const int enumerations = CountOf(CountedClass::CCDMEnumeration).alive;
    int translators = 0;
    {
        CCDMClassLibrary library;
        EXPECT_EQ(CountOf(CountedClass::CCDMClassLibrary).alive, libraries + 1);
        CCDMClass& record = Define(library, "A", {}, {"x", "y"});
        EXPECT_EQ(CountOf(CountedClass::CCDMClass).alive, classes + 1);
        EXPECT_EQ(CountOf(CountedClass::CCDMAttribute).alive, attributes + 2);
        library.GetOrCreateEnumeration("E");
        EXPECT_EQ(CountOf(CountedClass::CCDMEnumeration).alive, enumerations + 1);
        record.attributes[0]->translators.emplace(
            "n", std::make_unique<CountingTranslator>(translators));
        record.attributes[0]->arrayTranslators.emplace(
            "n", std::make_unique<CountingTranslator>(translators));
        library.rootTranslators.emplace("n", std::make_unique<CountingTranslator>(translators));
        EXPECT_EQ(translators, 3);
    }
    EXPECT_EQ(translators, 0);
    EXPECT_EQ(CountOf(CountedClass::CCDMClass).alive, classes);
    EXPECT_EQ(CountOf(CountedClass::CCDMAttribute).alive, attributes);
    EXPECT_EQ(CountOf(CountedClass::CCDMEnumeration).alive, enumerations);
    EXPECT_EQ(CountOf(CountedClass::CCDMClassLibrary).alive, libraries);
}

TEST(AttributeWalker, class_with_nothing_gives_an_empty_walk) {
    CCDMClassLibrary library;
    CCDMClass& record = Define(library, "A", {}, {});
    CCDMAttributeWalker walker(record);
    EXPECT_EQ(walker.Current(), nullptr);
    EXPECT_FALSE(walker.First());
    EXPECT_FALSE(walker.Next());
    EXPECT_FALSE(walker.Last());
    EXPECT_FALSE(walker.Prev());
    EXPECT_EQ(walker.Current(), nullptr);
}

TEST(AttributeWalker, superclasses_come_first_by_name_then_own_in_file_order) {
    CCDMClassLibrary library;
    Define(library, "Base", {}, {"z", "a"});
    Define(library, "Left", {"Base"}, {"l"});
    Define(library, "Empty", {}, {});
    Define(library, "Right", {}, {"r"});
    CCDMClass& record = Define(library, "A", {"Right", "Left", "Empty"}, {"y", "x"});
    EXPECT_THAT(Forward(record),
                ElementsAre("Base.z", "Base.a", "Left.l", "Right.r", "A.y", "A.x"));
    EXPECT_THAT(Backward(record),
                ElementsAre("A.x", "A.y", "Right.r", "Left.l", "Base.a", "Base.z"));
}

TEST(AttributeWalker, shared_base_is_listed_twice) {
    CCDMClassLibrary library;
    Define(library, "Base", {}, {"b"});
    Define(library, "Left", {"Base"}, {"l"});
    Define(library, "Right", {"Base"}, {"r"});
    CCDMClass& record = Define(library, "A", {"Left", "Right"}, {});
    EXPECT_THAT(Forward(record), ElementsAre("Base.b", "Left.l", "Base.b", "Right.r"));
    EXPECT_THAT(Backward(record), ElementsAre("Right.r", "Base.b", "Left.l", "Base.b"));
}

TEST(AttributeWalker, redefined_attribute_is_shown_forward_and_passed_over_backward) {
    CCDMClassLibrary library;
    Define(library, "Base", {}, {"a", "b", "c"});
    CCDMClass& middle = Define(library, "A", {"Base"}, {"b"});
    EXPECT_THAT(Forward(middle), ElementsAre("Base.a", "Base.b", "Base.c", "A.b"));
    EXPECT_THAT(Backward(middle), ElementsAre("A.b", "Base.c", "Base.a"));
    // Two redefined ones in a row: the second is not compared.
    CCDMClass& row = Define(library, "B", {"Base"}, {"b", "c"});
    EXPECT_THAT(Backward(row), ElementsAre("B.c", "B.b", "Base.b", "Base.a"));
    // The first of a superclass: the walk goes on to the superclass before it.
    Define(library, "Aaa", {}, {"q"});
    CCDMClass& first = Define(library, "C", {"Aaa", "Base"}, {"a"});
    EXPECT_THAT(Backward(first), ElementsAre("C.a", "Base.c", "Base.b", "Aaa.q"));
    CCDMClass& only = Define(library, "D", {"Aaa"}, {"q"});
    EXPECT_THAT(Backward(only), ElementsAre("D.q"));
}

TEST(AttributeWalker, turns_round_anywhere) {
    CCDMClassLibrary library;
    Define(library, "Base", {}, {"a", "b"});
    CCDMClass& record = Define(library, "A", {"Base"}, {"x"});
    CCDMAttributeWalker walker(record);
    EXPECT_FALSE(walker.Prev()) << "before the first";
    EXPECT_TRUE(walker.Next());
    EXPECT_EQ(NameOf(walker.Current()), "Base.a");
    EXPECT_FALSE(walker.Prev());
    EXPECT_EQ(walker.Current(), nullptr);
    EXPECT_TRUE(walker.Next());
    EXPECT_TRUE(walker.Next());
    EXPECT_TRUE(walker.Next());
    EXPECT_EQ(NameOf(walker.Current()), "A.x");
    EXPECT_TRUE(walker.Prev());
    EXPECT_EQ(NameOf(walker.Current()), "Base.b");
    EXPECT_TRUE(walker.Next());
    EXPECT_EQ(NameOf(walker.Current()), "A.x");
    EXPECT_FALSE(walker.Next());
    EXPECT_FALSE(walker.Next());
    EXPECT_TRUE(walker.Prev());
    EXPECT_EQ(NameOf(walker.Current()), "A.x");
}

TEST(AttributeWalker, copies_are_independent) {
    CCDMClassLibrary library;
    Define(library, "Deep", {}, {"d", "e"});
    Define(library, "Base", {"Deep"}, {"a"});
    CCDMClass& record = Define(library, "A", {"Base"}, {"x"});
    CCDMAttributeWalker walker(record);
    ASSERT_TRUE(walker.First());
    CCDMAttributeWalker copy(walker);
    EXPECT_TRUE(walker.Next());
    EXPECT_TRUE(walker.Next());
    EXPECT_EQ(NameOf(copy.Current()), "Deep.d");
    EXPECT_TRUE(copy.Next());
    EXPECT_EQ(NameOf(copy.Current()), "Deep.e");
    EXPECT_EQ(NameOf(walker.Current()), "Base.a");
    copy = walker;
    EXPECT_TRUE(copy.Next());
    EXPECT_EQ(NameOf(copy.Current()), "A.x");
    EXPECT_EQ(NameOf(walker.Current()), "Base.a");
    const CCDMAttributeWalker& same = copy;
    copy = same;
    EXPECT_EQ(NameOf(copy.Current()), "A.x");
    walker = CCDMAttributeWalker(*library.FindClass("Deep"));
    EXPECT_TRUE(walker.Next());
    EXPECT_EQ(NameOf(walker.Current()), "Deep.d");
}

TEST(AttributeWalker, missing_superclass_is_logged_on_each_walk) {
    const TemporaryFolder folder;
    const LogLines log(folder);
    CCDMClassLibrary library;
    Define(library, "Base", {}, {"b"});
    CCDMClass& record = Define(library, "A", {"Absent", "Base"}, {"x"});
    const std::string line = "SuperClass Absent in class A not found";
    EXPECT_THAT(Forward(record), ElementsAre("Base.b", "A.x"));
    EXPECT_THAT(log.Lines(), ElementsAre(line));
    EXPECT_THAT(Backward(record), ElementsAre("A.x", "Base.b"));
    EXPECT_THAT(log.Lines(), ElementsAre(line, line));
}

TEST(AttributeWalker, circle_of_superclasses_ends) {
    const TemporaryFolder folder;
    const LogLines log(folder);
    CCDMClassLibrary library;
    CCDMClass& record = Define(library, "A", {"B"}, {"a"});
    Define(library, "B", {"A"}, {"b"});
    CCDMClass& own = Define(library, "Own", {"Own"}, {"o"});
    EXPECT_THAT(Forward(record), ElementsAre("B.b", "A.a"));
    EXPECT_THAT(Backward(record), ElementsAre("A.a", "B.b"));
    EXPECT_THAT(Forward(own), ElementsAre("Own.o"));
    EXPECT_THAT(log.Lines(), ElementsAre("SuperClass A in class B is circular",
                                         "SuperClass A in class B is circular",
                                         "SuperClass Own in class Own is circular"));
    EXPECT_EQ(record.DistanceToClass("A"), 2);
    EXPECT_EQ(record.DistanceToClass("Z"), 0);
}

TEST(DistanceToClass, counts_levels_in_the_order_of_the_names) {
    CCDMClassLibrary library;
    Define(library, "Root", {}, {});
    Define(library, "Long", {"Mid"}, {});
    Define(library, "Mid", {"Root"}, {});
    CCDMClass& record = Define(library, "A", {"Absent", "Long", "Root"}, {});
    EXPECT_EQ(record.DistanceToClass("Long"), 1);
    EXPECT_EQ(record.DistanceToClass("Mid"), 2);
    EXPECT_EQ(record.DistanceToClass("Root"), 3) << "the first way counts, not the shortest";
    EXPECT_EQ(record.DistanceToClass("Absent"), 1) << "a name is enough";
    EXPECT_EQ(record.DistanceToClass("A"), 0);
    EXPECT_EQ(record.DistanceToClass(""), 0);
    EXPECT_EQ(library.FindClass("Root")->DistanceToClass("A"), 0);
}

TEST(DistanceToClass, many_ways_to_one_ancestor_are_walked_once) {
    CCDMClassLibrary library;
    for (int level = 0; level < 60; ++level) {
        const std::string next = std::to_string(level + 1);
        for (const char* side : {"L", "R"}) {
            Define(library, (side + std::to_string(level)).c_str(), {"L" + next, "R" + next}, {});
        }
    }
    EXPECT_EQ(library.FindClass("L0")->DistanceToClass("None"), 0);
    EXPECT_EQ(library.FindClass("L0")->DistanceToClass("R60"), 60);
}

TEST(MessageText, has_any_length) {
    EXPECT_EQ(MessageText("%s", ""), "");
    EXPECT_EQ(MessageText("a %s %d", "b", 3), "a b 3");
    const std::string text(5000, 'x');
    EXPECT_EQ(MessageText("%s", text.c_str()), text);
    EXPECT_EQ(MessageText("%.128s", text.c_str()).size(), 128u);
}

}  // namespace

}  // namespace fixtop
