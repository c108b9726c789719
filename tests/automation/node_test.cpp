// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstring>
#include <functional>

#include "automation/objects.h"
#include "automation/script_nodes.h"
#include "diagnostics/instance_counts.h"
#include "diagnostics/memory_guard.h"
#include "fixtop/collection.h"
#include "framework/nodes/empties.h"
#include "framework/nodes/top_entry.h"

#if defined(__linux__)
#include <malloc.h>
#endif

namespace fixtop {

namespace {

class QsiNode : public testing::Test {
 protected:
    QsiNode() {
        feed_.Set("type", "Object(QSIMaterialStream)").Set("value", 12.5);
        feed_.Add("Temperature").Set("value", 25).Set("type", "Real").container = false;
        feed_.Add("Pressure");
        root_.Add("S.1");
    }
    Ref<IQSINode> Top() { return NodeAt(root_); }

    ScriptNode root_{"Root"};
    ScriptNode& feed_ = root_.Add("Feed");
    Ref<IQSINode> top_ = Top();
};

TEST_F(QsiNode, child_is_the_node_at_the_end_of_a_path) {
    const auto child = ChildOf(*top_, "Feed.Temperature");
    EXPECT_EQ("Root.Feed.Temperature", PathOf(*child));
    EXPECT_EQ(1u, CountOf(*child)) << "one reference for the caller";
    EXPECT_EQ("25", ReadOf(*child, "value"));
    EXPECT_EQ("Root", PathOf(*top_)) << "the node itself has not moved";
}

TEST_F(QsiNode, unknown_child_is_null_and_leaves_the_node_usable) {
    for (const char* path : {"Nope", "Feed.Nope", "Feed[", "Feed.Temperature.Nope"}) {
        EXPECT_EQ(kResultFalse,
                  Refused<IQSINode>([&](IQSINode** out) { return top_->GetChild(path, out); }))
            << path;
    }
    EXPECT_EQ("Root.Feed", PathOf(*ChildOf(*top_, "Feed")));
}

TEST_F(QsiNode, children_of_a_leaf_are_none) {
    const auto leaf = ChildOf(*top_, "Feed.Temperature");
    EXPECT_EQ(kResultFalse, Refused<IQSINodeIterator>(
                                [&](IQSINodeIterator** out) { return leaf->GetChildren(out); }));
    EXPECT_EQ("25", ReadOf(*leaf, "value"));
}

TEST_F(QsiNode, attribute_without_a_value_is_none) {
    EXPECT_EQ(kResultFalse, Refused<IQSIAttribute>([&](IQSIAttribute** out) {
                  return top_->GetAttribute("value", out);
              }));
    EXPECT_EQ("12.5", ReadOf(*ChildOf(*top_, "Feed"), "value"));
}

TEST_F(QsiNode, parent_of_the_top_is_at_the_top) {
    const auto leaf = ChildOf(*top_, "Feed.Temperature");
    const auto parent = Take<IQSINode>([&](IQSINode** out) { return leaf->GetParent(out); });
    EXPECT_EQ("Root.Feed", PathOf(*parent));
    EXPECT_EQ("Root.Feed.Temperature", PathOf(*leaf));
    auto above = Take<IQSINode>([&](IQSINode** out) { return top_->GetParent(out); });
    EXPECT_EQ("Root", PathOf(*above));
    EXPECT_NE(top_.Get(), above.Get());
}

TEST_F(QsiNode, document_is_always_refused) {
    void* document = this;
    EXPECT_EQ(kResultNoInterface, top_->GetDocument(this, &document));
    EXPECT_EQ(nullptr, document);
    EXPECT_EQ(kResultNoInterface, top_->GetDocument(nullptr, &document));
    EXPECT_EQ(kResultPointer, top_->GetDocument(this, nullptr));
}

TEST_F(QsiNode, variable_is_seen_by_paths_from_the_node) {
    EXPECT_EQ(kResultOk, top_->SetVariable("which", "Feed"));
    EXPECT_EQ("Root.Feed", PathOf(*ChildOf(*top_, "%which")));
    EXPECT_EQ(kResultOk, top_->SetVariable("which", "\"S.1\""));
    EXPECT_EQ(kResultOk, top_->SetVariable("other", "Pressure"));
    EXPECT_EQ("Root.Feed.Pressure", PathOf(*ChildOf(*top_, "Feed.%other")));
    EXPECT_EQ("Root.Feed.Pressure", PathOf(*ChildOf(*ChildOf(*top_, "Feed"), "%other")))
        << "nodes that are asked for later have it";
}

TEST_F(QsiNode, path_reads_back) {
    const auto node = ChildOf(*top_, "\"S.1\"");
    EXPECT_EQ("Root.\"S.1\"", PathOf(*node));
}

TEST_F(QsiNode, full_name_is_the_path_in_1023_bytes) {
    EXPECT_EQ("Root.Feed",
              TakeText([&](char** out) { return ChildOf(*top_, "Feed")->GetFullName(out); }));
    const std::string name(1500, 'n');
    root_.Add(name);
    const auto node = ChildOf(*top_, name.c_str());
    EXPECT_EQ(("Root." + name).substr(0, 1023),
              TakeText([&](char** out) { return node->GetFullName(out); }));
    EXPECT_EQ("Root." + name, PathOf(*node));
}

TEST_F(QsiNode, class_name_is_inside_of_the_type) {
    const auto class_of = [&](const char* path) {
        return TakeText([&](char** out) { return ChildOf(*top_, path)->GetClassName(out); });
    };
    EXPECT_EQ("QSIMaterialStream", class_of("Feed"));
    EXPECT_EQ("Real", class_of("Feed.Temperature"));
    EXPECT_EQ(kResultFalse, Refused<char>([&](char** out) { return top_->GetClassName(out); }));
    feed_.Set("type", "Object(");
    EXPECT_EQ("Object(", class_of("Feed"));
}

TEST_F(QsiNode, null_pointers_are_refused) {
    const char* const no_text = nullptr;
    EXPECT_EQ(kResultPointer, top_->GetChild("Feed", nullptr));
    EXPECT_EQ(kResultPointer,
              Refused<IQSINode>([&](IQSINode** out) { return top_->GetChild(no_text, out); }));
    EXPECT_EQ(kResultPointer, top_->GetChildren(nullptr));
    EXPECT_EQ(kResultPointer, top_->GetAttribute("id", nullptr));
    EXPECT_EQ(kResultPointer, Refused<IQSIAttribute>([&](IQSIAttribute** out) {
                  return top_->GetAttribute(no_text, out);
              }));
    EXPECT_EQ(kResultPointer, top_->GetAttributes(nullptr));
    EXPECT_EQ(kResultPointer, top_->GetPath(nullptr));
    EXPECT_EQ(kResultPointer, top_->GetParent(nullptr));
    EXPECT_EQ(kResultPointer, top_->NewCollection(nullptr));
    EXPECT_EQ(kResultPointer, top_->GetAltPath("Feed", nullptr));
    EXPECT_EQ(kResultPointer, Refused<IQSICollection>([&](IQSICollection** out) {
                  return top_->GetAltPath(no_text, out);
              }));
    EXPECT_EQ(kResultPointer, top_->SetVariable(no_text, "x"));
    EXPECT_EQ(kResultPointer, top_->SetVariable("x", no_text));
    EXPECT_EQ(kResultPointer, top_->GetFullName(nullptr));
    EXPECT_EQ(kResultPointer, top_->GetClassName(nullptr));
}

// A text that is handed out has a buffer of its length and one byte more, as far as the allocator
// tells: it rounds up to 16 bytes at most, and the one that checks addresses not at all.
TEST_F(QsiNode, texts_end_with_nul_in_buffers_of_their_length) {
#if defined(__linux__)
    for (const std::size_t length : {995u, 996u, 1000u, 1003u, 1015u}) {
        const std::string text(length, 'n');
        ScriptNode& node =
            root_.Add(text).Set(text, 1).Set("id", Text(text)).Set("type", Text(text));
        node.Add("below");
        const auto place = ChildOf(*NodeAt(root_), text.c_str());
        const auto v_place = VNodeAt(node);
        const auto value = Take<IQSIAttribute>(
            [&](IQSIAttribute** out) { return place->GetAttribute("id", out); });
        const auto rows = Take<IQSIAttributeIterator>(
            [&](IQSIAttributeIterator** out) { return place->GetAttributes(out); });
        const auto siblings = Take<IQSINodeIterator>(
            [&](IQSINodeIterator** out) { return NodeAt(root_)->GetChildren(out); });
        std::int32_t moved = 0;
        EXPECT_EQ(kResultOk, siblings->Move(static_cast<int>(root_.children.size()) - 1, &moved));
        const auto collection =
            Take<IQSICollection>([&](IQSICollection** out) { return place->NewCollection(out); });
        const auto items = Take<IQSICollectionIterator>(
            [&](IQSICollectionIterator** out) { return collection->GetIterator(out); });
        EXPECT_EQ(kResultOk, items->Reset());
        struct Case {
            std::function<HRESULT(char**)> read;
            std::size_t length;
        };
        const Case cases[] = {
            {[&](char** out) { return place->GetPath(out); }, length + 5},
            {[&](char** out) { return place->GetFullName(out); }, length + 5},
            {[&](char** out) { return place->GetClassName(out); }, length},
            {[&](char** out) { return value->GetString(out); }, length},
            {[&](char** out) { return rows->GetName(out); }, length},
            {[&](char** out) { return siblings->GetName(out); }, length},
            {[&](char** out) { return items->GetId(out); }, length},
            {[&](char** out) { return v_place->GetString("id", out); }, length},
        };
        for (const Case& each : cases) {
            char* read = nullptr;
            ASSERT_EQ(kResultOk, each.read(&read)) << &each - cases;
            EXPECT_EQ(each.length, std::strlen(read)) << &each - cases;
            const std::size_t size = malloc_usable_size(read);
            EXPECT_GE(size, each.length + 1) << &each - cases;
            EXPECT_LT(size, each.length + 1 + 16) << &each - cases;
            FreeAsClient(read);
        }
    }
#else
    GTEST_SKIP() << "the allocator does not tell";
#endif
}

TEST_F(QsiNode, memory_that_runs_out_is_told_and_nothing_handed_out) {
    const auto feed = ChildOf(*top_, "Feed");
    const auto rows = Take<IQSIAttributeIterator>(
        [&](IQSIAttributeIterator** out) { return feed->GetAttributes(out); });
    feed_.on_read = [](FIVarSet*, const std::string&) { throw std::bad_alloc(); };
    const int failures = memory::Failures();
    EXPECT_EQ(kResultOutOfMemory, Refused<IQSIAttribute>([&](IQSIAttribute** out) {
                  return feed->GetAttribute("value", out);
              }));
    EXPECT_EQ(kResultOutOfMemory,
              Refused<char>([&](char** out) { return feed->GetClassName(out); }));
    EXPECT_EQ(failures + 2, memory::Failures());
    feed_.on_read = {};
    EXPECT_EQ("12.5", ReadOf(*feed, "value"));
}

// What is contained in the middle of a member spoils its answer.
TEST_F(QsiNode, answer_that_lacks_something_is_not_handed_out) {
    const auto feed = ChildOf(*top_, "Feed");
    feed_.on_read = [](FIVarSet*, const std::string&) {
        memory::Contain([] { throw std::bad_alloc(); });
    };
    EXPECT_EQ(kResultOutOfMemory, Refused<IQSIAttribute>([&](IQSIAttribute** out) {
                  return feed->GetAttribute("value", out);
              }));
    feed_.on_read = {};
    EXPECT_EQ("12.5", ReadOf(*feed, "value"));
}

TEST_F(QsiNode, new_collection_holds_the_node) {
    const auto feed = ChildOf(*top_, "Feed");
    const auto collection =
        Take<IQSICollection>([&](IQSICollection** out) { return feed->NewCollection(out); });
    EXPECT_EQ(1u, CountOf(*collection));
    const auto items = Take<IQSICollectionIterator>(
        [&](IQSICollectionIterator** out) { return collection->GetIterator(out); });
    ASSERT_EQ(kResultOk, items->Reset());
    const auto item = Take<IQSINode>([&](IQSINode** out) { return items->GetNode(out); });
    EXPECT_EQ("Root.Feed", PathOf(*item));
    EXPECT_EQ(kResultFalse, items->Move(1));
}

TEST_F(QsiNode, alternative_path_collects_all_matches) {
    const auto all =
        Take<IQSICollection>([&](IQSICollection** out) { return top_->GetAltPath("Feed.*", out); });
    const auto items = Take<IQSICollectionIterator>(
        [&](IQSICollectionIterator** out) { return all->GetIterator(out); });
    std::string paths;
    for (HRESULT on = items->Reset(); on == kResultOk; on = items->Move(1)) {
        paths += PathOf(*Take<IQSINode>([&](IQSINode** out) { return items->GetNode(out); })) + ";";
    }
    EXPECT_EQ("Root.Feed.Temperature;Root.Feed.Pressure;", paths);
}

TEST_F(QsiNode, alternative_path_without_matches_is_an_empty_collection) {
    const auto none = Take<IQSICollection>(
        [&](IQSICollection** out) { return top_->GetAltPath("Feed.Nope", out); });
    std::int32_t count = -1;
    double* values = nullptr;
    EXPECT_EQ(kResultOk, none->GetValues(&count, &values));
    EXPECT_EQ(0, count);
    EXPECT_EQ(kResultFalse, Refused<IQSICollection>([&](IQSICollection** out) {
                  return top_->GetAltPath("Feed[", out);
              }))
        << "no path";
}

TEST_F(QsiNode, all_classes_are_counted) {
    const auto alive = [](CountedClass counted) { return CountOf(counted).alive; };
    const int nodes = alive(CountedClass::CQSINode);
    const int before[] = {alive(CountedClass::CQSINodeIterator), alive(CountedClass::CQSIAttribute),
                          alive(CountedClass::CQSIAttributeIterator),
                          alive(CountedClass::CQSICollection),
                          alive(CountedClass::CQSICollectionIterator)};
    const int total = CountOf(CountedClass::CQSINode).total;
    {
        const auto feed = ChildOf(*top_, "Feed");
        const auto children =
            Take<IQSINodeIterator>([&](IQSINodeIterator** out) { return feed->GetChildren(out); });
        const auto value = Take<IQSIAttribute>(
            [&](IQSIAttribute** out) { return feed->GetAttribute("value", out); });
        const auto rows = Take<IQSIAttributeIterator>(
            [&](IQSIAttributeIterator** out) { return feed->GetAttributes(out); });
        const auto collection =
            Take<IQSICollection>([&](IQSICollection** out) { return feed->NewCollection(out); });
        const auto items = Take<IQSICollectionIterator>(
            [&](IQSICollectionIterator** out) { return collection->GetIterator(out); });
        EXPECT_EQ(nodes + 1, alive(CountedClass::CQSINode));
        EXPECT_EQ(before[0] + 1, alive(CountedClass::CQSINodeIterator));
        EXPECT_EQ(before[1] + 1, alive(CountedClass::CQSIAttribute));
        EXPECT_EQ(before[2] + 1, alive(CountedClass::CQSIAttributeIterator));
        EXPECT_EQ(before[3] + 1, alive(CountedClass::CQSICollection));
        EXPECT_EQ(before[4] + 1, alive(CountedClass::CQSICollectionIterator));
    }
    EXPECT_EQ(nodes, alive(CountedClass::CQSINode));
    EXPECT_EQ(before[0], alive(CountedClass::CQSINodeIterator));
    EXPECT_EQ(before[1], alive(CountedClass::CQSIAttribute));
    EXPECT_EQ(before[2], alive(CountedClass::CQSIAttributeIterator));
    EXPECT_EQ(before[3], alive(CountedClass::CQSICollection));
    EXPECT_EQ(before[4], alive(CountedClass::CQSICollectionIterator));
    EXPECT_EQ(total + 1, CountOf(CountedClass::CQSINode).total);
}

}  // namespace

}  // namespace fixtop
