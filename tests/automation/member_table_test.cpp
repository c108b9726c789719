// SPDX-License-Identifier: Apache-2.0
// The table of typed members over small class files.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "automation/typed/member_table.h"
#include "model/class_library.h"
#include "support/log_lines.h"
#include "support/temporary_folder.h"

namespace fixtop {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Texts = std::vector<std::string>;

// A class with its superclasses, of the names that are given, and its attributes, as XML.
std::string Class(const std::string& name, const Texts& superclasses,
                  const std::string& attributes) {
    std::string text = "<Class Name='" + name + "'>";
    for (const std::string& each : superclasses) {
        text += "<Superclass>" + each + "</Superclass>";
    }
    return text + "</Class><ClassAttributes Name='" + name + "'>" + attributes +
           "</ClassAttributes>";
}

std::string Reals(const Texts& names) {
    std::string text;
    for (const std::string& each : names) text += "<Attribute Name='" + each + "' Type='Real'/>";
    return text;
}

std::string Object(const std::string& name, const std::string& class_name,
                   const std::string& multiplicity = "1") {
    return "<Attribute Name='" + name + "' Type='Object' Multiplicity='" + multiplicity +
           "'><ClassName>" + class_name + "</ClassName></Attribute>";
}

// The table of a class file.
class Members {
 public:
    explicit Members(const std::string& body) : log_(folder_) {
        folder_.Write("lib.xml", "<?xml version='1.0'?>\n<QZClassLibrary Name='n' Format='f'>" +
                                     body + "</QZClassLibrary>");
        CCDMClassLibrary library;
        EXPECT_TRUE(library.ReadClassFile("lib.xml"));
        table_ = std::make_unique<MemberTable>(library);
    }

    const TypedInterface& Of(const std::string& class_name) const {
        const TypedInterface* found = table_->Find(class_name);
        if (found) return *found;
        ADD_FAILURE() << class_name;
        static const TypedInterface none;
        return none;
    }
    // "0 Name" and so on.
    Texts Numbered(const std::string& class_name) const {
        const TypedInterface& found = Of(class_name);
        Texts rows;
        for (int number = 0; number < found.Count(); ++number) {
            const std::string& name = found.Member(number)->name;
            EXPECT_EQ(number, found.NumberOf(name));
            rows.push_back(std::to_string(number) + ' ' + name);
        }
        EXPECT_EQ(nullptr, found.Member(found.Count()));
        EXPECT_EQ(nullptr, found.Member(-1));
        return rows;
    }
    std::string BaseOf(const std::string& class_name) const {
        const TypedInterface* base = Of(class_name).base;
        return base ? base->name : "";
    }
    Texts Order() const {
        Texts names;
        for (const TypedInterface* each : table_->Interfaces()) {
            EXPECT_TRUE(each->is_made) << each->name;
            names.push_back(each->class_name);
        }
        return names;
    }
    const MemberTable& Table() const { return *table_; }

 private:
    TemporaryFolder folder_;
    LogLines log_;
    std::unique_ptr<MemberTable> table_;
};

TEST(MemberTable, members_of_the_base_come_first) {
    const Members members(Class("A", {"M"}, Reals({"own"})) + Class("M", {"Z"}, Reals({"middle"})) +
                          Class("Z", {}, Reals({"far", "further"})));
    EXPECT_THAT(members.Numbered("A"), ElementsAre("0 far", "1 further", "2 middle", "3 own"));
    EXPECT_EQ("IA", members.Of("A").name);
    EXPECT_EQ("IAArray", members.Of("A").ArrayName());
    EXPECT_EQ("IM", members.BaseOf("A"));
    EXPECT_EQ("", members.BaseOf("Z"));
    EXPECT_EQ(3, members.Of("A").first_number);
    EXPECT_EQ("Z", members.Of("A").Member(0)->owner);
    EXPECT_EQ(-1, members.Of("A").NumberOf("Own")) << "the case of letters counts";
    EXPECT_THAT(members.Order(), ElementsAre("Z", "M", "A"));
}

TEST(MemberTable, interfaces_are_in_the_order_of_names) {
    const Members members(Class("B", {}, "") + Class("C", {}, "") + Class("A", {}, ""));
    EXPECT_THAT(members.Order(), ElementsAre("A", "B", "C"));
    EXPECT_EQ(nullptr, members.Table().Find("D"));
}

TEST(MemberTable, class_of_any_name_has_an_interface) {
    const Members members(Class("PhaseEnvelopeCurves", {}, Reals({"x"})));
    EXPECT_EQ("IPhaseEnvelopeCurves", members.Of("PhaseEnvelopeCurves").name);
}

TEST(MemberTable, missing_superclass_is_left_out) {
    const Members members(Class("A", {"Nowhere"}, Reals({"x"})) +
                          Class("B", {"Nowhere", "Z"}, Reals({"y"})) +
                          Class("Z", {}, Reals({"z"})));
    EXPECT_EQ("", members.BaseOf("A"));
    EXPECT_THAT(members.Numbered("A"), ElementsAre("0 x"));
    EXPECT_EQ("IZ", members.BaseOf("B")) << "the first that there is";
    EXPECT_THAT(members.Numbered("B"), ElementsAre("0 z", "1 y"));
}

// As in the tree: superclasses by their names, each with its own first.
TEST(MemberTable, further_superclasses_give_their_members_to_the_class) {
    const Members members(Class("A", {"P", "Q"}, Reals({"a"})) + Class("P", {"R"}, Reals({"p"})) +
                          Class("Q", {"S", "R"}, Reals({"q"})) + Class("R", {}, Reals({"r"})) +
                          Class("S", {}, Reals({"s"})));
    EXPECT_EQ("IP", members.BaseOf("A"));
    EXPECT_THAT(members.Numbered("A"), ElementsAre("0 r", "1 p", "2 s", "3 q", "4 a"));
    EXPECT_EQ(2, members.Of("A").first_number);
    EXPECT_EQ("S", members.Of("A").Member(2)->owner);
    EXPECT_EQ("A", members.Of("A").Member(4)->owner);
    EXPECT_THAT(members.Numbered("Q"), ElementsAre("0 r", "1 s", "2 q"));
}

TEST(MemberTable, circle_of_superclasses_ends) {
    const Members members(Class("A", {"B"}, Reals({"a"})) + Class("B", {"C"}, Reals({"b"})) +
                          Class("C", {"A"}, Reals({"c"})) + Class("Self", {"Self"}, Reals({"s"})) +
                          Class("Below", {"B"}, Reals({"d"})));
    for (const char* each : {"A", "B", "C"}) {
        Texts names;
        for (int number = 0; number < members.Of(each).Count(); ++number) {
            names.push_back(members.Of(each).Member(number)->name);
        }
        EXPECT_THAT(names, testing::UnorderedElementsAre("a", "b", "c")) << each;
    }
    // From the class that is made first, the circle is open where it leads back to that.
    EXPECT_EQ("IB", members.BaseOf("A"));
    EXPECT_EQ("IC", members.BaseOf("B"));
    EXPECT_EQ("", members.BaseOf("C"));
    EXPECT_THAT(members.Numbered("Self"), ElementsAre("0 s"));
    EXPECT_EQ("", members.BaseOf("Self"));
    EXPECT_EQ("3 d", members.Numbered("Below").back());
    EXPECT_THAT(members.Order(), ElementsAre("C", "B", "A", "Below", "Self"));
}

TEST(MemberTable, attribute_that_is_declared_twice_is_one_member) {
    const Members members(Class("A", {}, Reals({"x", "y", "x"})));
    EXPECT_THAT(members.Numbered("A"), ElementsAre("0 x", "1 y"));
}

TEST(MemberTable, attribute_that_is_declared_again_stays_the_member_of_the_base) {
    const Members members(Class("A", {"Z"}, Object("x", "Z") + Reals({"y"})) +
                          Class("Z", {}, Reals({"x"})));
    EXPECT_THAT(members.Numbered("A"), ElementsAre("0 x", "1 y"));
    EXPECT_EQ(TypedMember::Kind::kValue, members.Of("A").Member(0)->kind);
    EXPECT_EQ("Z", members.Of("A").Member(0)->owner);
}

TEST(MemberTable, kinds_of_members) {
    using Kind = TypedMember::Kind;
    const Members members(
        Class("A", {},
              Object("one", "A") + Object("many", "A", "n") + Object("lost", "Nowhere") +
                  Object("all_lost", "Nowhere", "n") +
                  "<Attribute Name='choice' Type='Enumeration'><EnumName>eA</EnumName></Attribute>"
                  "<Attribute Name='numbers' Type='Real' Multiplicity='n'/>"
                  "<Attribute Name='odd' Type='Float'/>"
                  "<Attribute Name='text' Type='String'><ClassName>A</ClassName></Attribute>"));
    const auto row = [&](const char* name) {
        const TypedInterface& of = members.Of("A");
        const TypedMember& member = *of.Member(of.NumberOf(name));
        return std::tuple(member.kind, std::string(AttrTypeText(member.type)), member.type_name,
                          member.is_array);
    };
    EXPECT_EQ(std::tuple(Kind::kObject, "Object", "A", false), row("one"));
    EXPECT_EQ(std::tuple(Kind::kArray, "Object", "A", true), row("many"));
    EXPECT_EQ(std::tuple(Kind::kValue, "Object", "Nowhere", false), row("lost"));
    EXPECT_EQ(std::tuple(Kind::kValue, "Object", "Nowhere", true), row("all_lost"));
    EXPECT_EQ(std::tuple(Kind::kValue, "Enumeration", "eA", false), row("choice"));
    EXPECT_EQ(std::tuple(Kind::kValue, "Real", "", true), row("numbers"));
    EXPECT_EQ(std::tuple(Kind::kValue, "None", "", false), row("odd"));
    EXPECT_EQ(std::tuple(Kind::kValue, "String", "A", false), row("text"));
    EXPECT_EQ("", members.Of("A").Member(0)->quantity) << "no units were read";
}

Texts Many(const std::string& letter, int count) {
    Texts names;
    for (int number = 0; number < count; ++number) names.push_back(letter + std::to_string(number));
    return names;
}

TEST(MemberTable, interface_has_no_more_than_a_hundred_members) {
    const Members members(
        Class("A", {"Z"}, Reals(Many("a", 45))) + Class("B", {"A"}, Reals({"b"})) +
        Class("Full", {}, Reals(Many("f", 100))) + Class("Z", {}, Reals(Many("z", 60))));
    const TypedInterface& of = members.Of("A");
    EXPECT_EQ(100, of.Count());
    EXPECT_EQ(5, of.left_out);
    EXPECT_EQ("a39", of.Member(99)->name);
    EXPECT_EQ(-1, of.NumberOf("a40"));
    EXPECT_EQ(100, members.Of("B").Count());
    EXPECT_EQ(1, members.Of("B").left_out);
    EXPECT_THAT(members.Of("B").members, IsEmpty());
    EXPECT_EQ(0, members.Of("Full").left_out);
    EXPECT_EQ(100, members.Of("Full").Count());
}

TEST(MemberTable, nameless_classes_and_attributes_have_none) {
    const Members members(Class("", {}, Reals({"x"})) + Class("A", {""}, Reals({"", "y"})));
    EXPECT_THAT(members.Order(), ElementsAre("A"));
    EXPECT_THAT(members.Numbered("A"), ElementsAre("0 y"));
}

TEST(MemberTable, class_is_read_from_the_text_of_a_type) {
    for (const auto& [text, name] : {std::pair("Object(QSIStream)", "QSIStream"),
                                     {"Object()", ""},
                                     {"Object(A", ""},
                                     {"Object", ""},
                                     {"Objects(A)", ""},
                                     {"Enumeration(eA)", ""},
                                     {"Object(A(b))", "A(b)"},
                                     {"", ""}}) {
        EXPECT_EQ(name, ClassOfTypeText(text)) << text;
    }
}

}  // namespace

}  // namespace fixtop
