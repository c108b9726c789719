// SPDX-License-Identifier: Apache-2.0
// What each kind of translator does with a reference, and what it shows of itself.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mapping/map_file/map_text.h"
#include "mapping/translators/array_func_translator.h"
#include "mapping/translators/array_function_translator.h"
#include "mapping/translators/array_map_translator.h"
#include "mapping/translators/function_translator.h"
#include "mapping/translators/scalar_translators.h"
#include "mapping_fixture.h"

namespace fixtop {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string DumpOf(const CCDMTranslator& translator) {
    std::string text;
    const char* closing = translator.DumpBody(text);
    return text + closing;
}

// Root.unit.{a, b}, on which a reference stands at "unit".
class Translators : public testing::Test {
 protected:
    Translators() {
        unit_.Add("a").Set("value", 1);
        unit_.Add("b");
        auto it = root_.Iterate();
        EXPECT_TRUE(it->DownFirst());
        reference_ = ReferenceTo(*it);
    }
    ~Translators() override { reference_.Reset(); }

    template <class Translator>
    std::unique_ptr<Translator> WithBody(const std::string& text) {
        std::unique_ptr<Translator> made;
        if constexpr (std::is_default_constructible_v<Translator>) {
            made = std::make_unique<Translator>();
        } else {
            made = std::make_unique<Translator>(functions_.Module());
        }
        made->SetBody(text);
        return made;
    }

    TemporaryFolder folder_;
    LogLines log_{folder_};
    OfferedFunctions functions_;
    ScriptNode root_{"Root"};
    ScriptNode& unit_{root_.Add("unit")};
    Ref<FIReference> reference_;
};

TEST_F(Translators, dumps_are_told_texts) {
    EXPECT_EQ(DumpOf(*WithBody<CCDMMapTranslator>(" a.b\n")),
              "\t<Translate Type=\"Map\">a.b</Translate>\n");
    EXPECT_EQ(DumpOf(*WithBody<CCDMFunctionTranslator>(" CT Scalar\n")),
              "\t<Translate Type=\"Func\">CTScalar</TranslateArray>\n");
    EXPECT_EQ(DumpOf(CCDMDummyTranslator()), "\t<Translate Type=\"Dummy\"></Translate>\n");
    EXPECT_EQ(DumpOf(*WithBody<CCDMDummyTranslator>("\n note ")),
              "\t<Translate Type=\"Dummy\">note</Translate>\n");
    EXPECT_EQ(DumpOf(*WithBody<CCDMArrayMapTranslator>("\ta.*")),
              "\t<TranslateArray Type=\"Map\">a.*</TranslateArray>");
    EXPECT_EQ(DumpOf(*WithBody<CCDMArrayFuncTranslator>("CTArray")),
              "\t<TranslateArray Type=\"ArrayFunc\">CTArray</TranslateArray>\n");
    const auto filter = WithBody<CCDMArrayFunctionTranslator>("CTScalar");
    EXPECT_EQ(DumpOf(*filter), "\t<TranslateArray Type=\"Func\">CTScalar</TranslateArray>\n");
    filter->SetPath(" * ");
    EXPECT_EQ(DumpOf(*filter), "\t<TranslateArray Type=\"Func\">* CTScalar</TranslateArray>\n");
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(Translators, map_goes_along_its_path) {
    const auto map = WithBody<CCDMMapTranslator>("a");
    EXPECT_TRUE(map->Test(*reference_));
    EXPECT_EQ(NameOf(*reference_), "unit");
    EXPECT_TRUE(map->Apply(*reference_));
    EXPECT_EQ(NameOf(*reference_), "a");
    EXPECT_FALSE(map->Test(*reference_));
    EXPECT_FALSE(map->Apply(*reference_));
    EXPECT_EQ(NameOf(*reference_), "a");
}

TEST_F(Translators, empty_map_stays) {
    for (const auto& map :
         {WithBody<CCDMMapTranslator>(""), std::make_unique<CCDMMapTranslator>()}) {
        EXPECT_TRUE(map->Test(*reference_));
        EXPECT_TRUE(map->Apply(*reference_));
        EXPECT_EQ(NameOf(*reference_), "unit");
    }
}

TEST_F(Translators, map_reads_variables) {
    reference_->SetVar(Text("which"), Text("b"));
    EXPECT_TRUE(WithBody<CCDMMapTranslator>("%which")->Apply(*reference_));
    EXPECT_EQ(NameOf(*reference_), "b");
}

TEST_F(Translators, body_that_does_not_parse_is_told_and_fails) {
    const auto map = WithBody<CCDMMapTranslator>("a[b");
    const auto array = WithBody<CCDMArrayMapTranslator>("a#");
    EXPECT_THAT(log_.Lines(), ElementsAre("Parse error, ] expected in: a[b",
                                          "Parse error, count expected following # in: a#"));
    EXPECT_FALSE(map->Test(*reference_));
    EXPECT_FALSE(map->Apply(*reference_));
    EXPECT_FALSE(array->Test(*reference_));
    EXPECT_FALSE(array->Apply(*reference_));
    EXPECT_FALSE(array->MakeIterator(*reference_)->HasMore());
    EXPECT_EQ(NameOf(*reference_), "unit");
}

TEST_F(Translators, function_is_asked_with_and_without_move) {
    const auto function = WithBody<CCDMFunctionTranslator>("CT\n\tScalar ");
    Recorded::Now().scalar = [](FIIteratorBase* it, int move) {
        return move == 0 || it->SeekPath(Text("b"));
    };
    EXPECT_TRUE(function->Test(*reference_));
    EXPECT_EQ(NameOf(*reference_), "unit");
    EXPECT_TRUE(function->Apply(*reference_));
    EXPECT_EQ(NameOf(*reference_), "b");
    EXPECT_THAT(Recorded::Now().calls, ElementsAre("move 0@1", "move 1@1"));
    Recorded::Now().scalar = nullptr;
    EXPECT_FALSE(function->Test(*reference_));
    EXPECT_FALSE(function->Apply(*reference_));
}

TEST_F(Translators, function_that_must_be_asked_first_is_asked_where_it_moves_from) {
    const auto function = WithBody<CCDMFunctionTranslator>("CTAsked");
    Recorded::Now().scalar = [](FIIteratorBase* it, int move) {
        if (move == 0) it->SetVarText("asked", "b");
        FIValue name;
        return it->GetVarText("asked", name) && (move == 0 || it->SeekPath(name));
    };
    EXPECT_TRUE(function->Apply(*reference_));
    EXPECT_EQ(NameOf(*reference_), "b");
    EXPECT_THAT(Recorded::Now().calls, ElementsAre("move 0@1", "move 1@1"));
    Recorded::Now().calls.clear();
    Recorded::Now().scalar = nullptr;
    EXPECT_FALSE(function->Apply(*reference_));
    EXPECT_THAT(Recorded::Now().calls, ElementsAre("move 0@2"));
}

TEST_F(Translators, function_without_a_body_fails_in_silence) {
    const auto function = WithBody<CCDMFunctionTranslator>(" \n\t");
    const auto filter = WithBody<CCDMArrayFunctionTranslator>("");
    const auto array = WithBody<CCDMArrayFuncTranslator>("\t");
    for (CCDMTranslator* each :
         std::initializer_list<CCDMTranslator*>{function.get(), filter.get(), array.get()}) {
        EXPECT_FALSE(each->Test(*reference_));
        EXPECT_FALSE(each->Apply(*reference_));
    }
    EXPECT_FALSE(array->MakeIterator(*reference_)->HasMore());
    EXPECT_FALSE(filter->MakeIterator(*reference_)->HasMore());
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(Translators, unknown_functions_are_told) {
    const std::string longest = "CT" + std::string(60, 'x');
    WithBody<CCDMFunctionTranslator>("CT None");
    WithBody<CCDMArrayFunctionTranslator>("CTNone");
    WithBody<CCDMArrayFuncTranslator>(longest);
    CCDMFunctionTranslator(nullptr).SetBody("CTScalar");
    EXPECT_THAT(log_.Lines(),
                ElementsAre(" Converter Semantic function: CTNone not found",
                            " Filter Semantic function: CTNone not found",
                            " Filter Semantic function: " + longest.substr(0, 40) + " not found",
                            " Converter Semantic function: CTScalar not found"));
}

TEST_F(Translators, dummy_stays_and_succeeds) {
    EXPECT_TRUE(CCDMDummyTranslator().Test(*reference_));
    EXPECT_TRUE(CCDMDummyTranslator().Apply(*reference_));
    EXPECT_EQ(NameOf(*reference_), "unit");
}

TEST_F(Translators, arrays_stay_and_give_a_walk_on_the_first_element) {
    const auto map = WithBody<CCDMArrayMapTranslator>("*");
    EXPECT_TRUE(map->Test(*reference_));
    EXPECT_TRUE(map->Apply(*reference_));
    EXPECT_EQ(NameOf(*reference_), "unit");
    {
        const auto walk = map->MakeIterator(*reference_);
        EXPECT_TRUE(walk->HasMore());
        EXPECT_EQ(NameOf(*reference_), "a");
    }
    EXPECT_EQ(NameOf(*reference_), "unit");

    Recorded::Now().scalar = [](FIIteratorBase* it, int) {
        FIValue name;
        it->GetName(name);
        return name.ToText() == "b";
    };
    const auto filter = WithBody<CCDMArrayFunctionTranslator>("CTScalar");
    EXPECT_FALSE(filter->Test(*reference_)) << "no path yet";
    filter->SetPath("*");
    EXPECT_TRUE(filter->Test(*reference_));
    EXPECT_TRUE(filter->Apply(*reference_));
    {
        const auto walk = filter->MakeIterator(*reference_);
        EXPECT_TRUE(walk->HasMore());
        EXPECT_EQ(NameOf(*reference_), "b");
    }
    EXPECT_EQ(NameOf(*reference_), "unit");

    Recorded::Now().array = [](FIIteratorBase*, FIValue*, int) { return 1; };
    const auto array = WithBody<CCDMArrayFuncTranslator>("CTArray");
    EXPECT_TRUE(array->Test(*reference_));
    EXPECT_TRUE(array->Apply(*reference_));
    EXPECT_THAT(Recorded::Now().calls, testing::Not(testing::Contains("-1@1")));
    EXPECT_TRUE(array->MakeIterator(*reference_)->HasMore());
    EXPECT_THAT(Recorded::Now().calls, testing::Contains("-1@1"));
}

TEST_F(Translators, reference_listens_where_it_was_moved_to) {
    ScriptNode& a = *unit_.children[0];
    unit_.can_notify = a.can_notify = true;
    auto it = root_.Iterate();
    ASSERT_TRUE(it->DownFirst());
    Ref<FIReference> reference = ReferenceTo(*it);
    EXPECT_EQ(unit_.subscriptions.size(), 1u);
    EXPECT_TRUE(WithBody<CCDMMapTranslator>("a")->Apply(*reference));
    EXPECT_EQ(a.subscriptions.size(), 1u) << "its deletion";
    EXPECT_EQ(unit_.subscriptions.size(), 1u) << "a change above it";
    EXPECT_EQ(unit_.subscriptions[0].kind, kValueChanged);
    reference.Reset();
    EXPECT_TRUE(a.subscriptions.empty());
    EXPECT_TRUE(unit_.subscriptions.empty());
}

TEST_F(Translators, node_that_is_gone_fails) {
    unit_.can_notify = true;
    auto it = root_.Iterate();
    ASSERT_TRUE(it->DownFirst());
    const Ref<FIReference> reference = ReferenceTo(*it);
    unit_.Notify(kNodeDeleted);
    Recorded::Now().scalar = [](FIIteratorBase*, int) { return true; };
    Recorded::Now().array = [](FIIteratorBase*, FIValue*, int) { return 5; };
    EXPECT_FALSE(WithBody<CCDMMapTranslator>("a")->Test(*reference));
    EXPECT_FALSE(WithBody<CCDMMapTranslator>("a")->Apply(*reference));
    EXPECT_FALSE(WithBody<CCDMFunctionTranslator>("CTScalar")->Test(*reference));
    EXPECT_FALSE(WithBody<CCDMFunctionTranslator>("CTScalar")->Apply(*reference));
    EXPECT_FALSE(WithBody<CCDMArrayFuncTranslator>("CTArray")->MakeIterator(*reference)->HasMore());
    EXPECT_FALSE(WithBody<CCDMArrayMapTranslator>("*")->MakeIterator(*reference)->HasMore());
    EXPECT_THAT(Recorded::Now().calls, IsEmpty());
}

TEST_F(Translators, stale_reference_is_found_again_first) {
    root_.can_notify = true;
    auto it = root_.Iterate();
    ASSERT_TRUE(it->DownFirst());
    const Ref<FIReference> reference = ReferenceTo(*it);
    root_.Add("second");
    std::swap(root_.children[0], root_.children[1]);
    root_.Notify(kValueChanged);
    EXPECT_TRUE(WithBody<CCDMMapTranslator>("a")->Apply(*reference));
    EXPECT_EQ(NameOf(*reference), "a");
}

TEST(MapText, trimming_keeps_a_trailing_tab_unless_one_leads) {
    const std::pair<const char*, const char*> rows[] = {
        {"", ""},           {"a", "a"},      {" a ", "a"},           {"\na\n", "a"},
        {" \n\ta", "a"},    {"a \n ", "a"},  {"a\t", "a\t"},         {"a \t", "a \t"},
        {"a\t ", "a\t"},    {" a\t", "a\t"}, {"\ta\t", "a"},         {"\t a \t\n", "a"},
        {"\n\ta\t", "a\t"}, {"a b", "a b"},  {"a\tb", "a\tb"},       {" ", ""},
        {"\t", ""},         {"\n \t", ""},   {"\ta\tb\t\t", "a\tb"}, {"a\r", "a\r"},
    };
    for (const auto& [text, trimmed] : rows) {
        EXPECT_EQ(TrimmedText(text), trimmed) << testing::PrintToString(text);
    }
}

TEST(MapText, packing_takes_out_all_blanks) {
    EXPECT_EQ(PackedText(" CT \n\tA b\t"), "CTAb");
    EXPECT_EQ(PackedText("\n\t "), "");
    EXPECT_EQ(PackedText("a\r"), "a\r");
}

TEST(MapText, blank_is_nothing_but_blanks) {
    for (const char* text : {"", " ", "\n", "\t", " \n\t "}) EXPECT_TRUE(IsBlank(text));
    for (const char* text : {"a", " a ", "\r"}) EXPECT_FALSE(IsBlank(text));
}

}  // namespace

}  // namespace fixtop
