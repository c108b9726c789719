// SPDX-License-Identifier: Apache-2.0
#include "automation/paste.h"

#include <gtest/gtest.h>

#include <cstring>

#include "automation/objects.h"
#include "automation/script_nodes.h"

namespace fixtop {

namespace {

const char kSelection[] =
    "<Selection><Items><Item><Path>Root.Feed</Path></Item>"
    "<Item><Path>Root.Nope</Path></Item>"
    "<Item><Path>Root.Heat</Path></Item></Items></Selection>";

class Paste : public testing::Test {
 protected:
    Paste() {
        root_.Add("Feed").Set("id", "Feed");
        root_.Add("Heat").Set("id", "Heat");
        node_ = ChildOf(*NodeAt(root_), "Heat");
    }
    HRESULT Refuse(const char* text, std::int32_t size) {
        return Refused<IQSICollection>(
            [&](IQSICollection** out) { return PasteText(node_.Get(), text, size, out); });
    }
    // The ids of its items, in their order.
    static std::string Ids(IQSICollection& collection) {
        const auto items = Take<IQSICollectionIterator>(
            [&](IQSICollectionIterator** out) { return collection.GetIterator(out); });
        std::string ids;
        for (HRESULT on = items->Reset(); on == kResultOk; on = items->Move(1)) {
            ids += TakeText([&](char** out) { return items->GetId(out); }) + ";";
        }
        return ids;
    }

    ScriptNode root_{"Root"};
    Ref<IQSINode> node_;
};

TEST_F(Paste, selection_becomes_a_collection_of_what_is_found) {
    const auto size = static_cast<std::int32_t>(std::strlen(kSelection));
    const auto pasted = Take<IQSICollection>(
        [&](IQSICollection** out) { return PasteText(node_.Get(), kSelection, size, out); });
    EXPECT_EQ("Feed;Heat;", Ids(*pasted));
    EXPECT_EQ(1u, CountOf(*pasted));
}

TEST_F(Paste, text_without_an_end_is_ended) {
    const std::size_t size = std::strlen(kSelection);
    const std::unique_ptr<char[]> bytes(new char[size]);
    std::memcpy(bytes.get(), kSelection, size);
    const auto pasted = Take<IQSICollection>([&](IQSICollection** out) {
        return PasteText(node_.Get(), bytes.get(), static_cast<std::int32_t>(size), out);
    });
    EXPECT_EQ("Feed;Heat;", Ids(*pasted));
}

TEST_F(Paste, selection_of_nothing_is_an_empty_collection) {
    for (const char* text : {"<Selection/>", "<Selection><Items/></Selection>",
                             "<Selection><Items><Item><Path/></Item></Items></Selection>"}) {
        const auto size = static_cast<std::int32_t>(std::strlen(text));
        const auto pasted = Take<IQSICollection>(
            [&](IQSICollection** out) { return PasteText(node_.Get(), text, size, out); });
        EXPECT_EQ("", Ids(*pasted)) << text;
    }
}

TEST_F(Paste, nothing_to_paste_is_told) {
    EXPECT_EQ(kResultFalse, Refuse(nullptr, 0));
    EXPECT_EQ(kResultFalse, Refuse(nullptr, 10));
    EXPECT_EQ(kResultFalse, Refuse(kSelection, 0));
    EXPECT_EQ(kResultFalse, Refuse(kSelection, -1));
}

TEST_F(Paste, what_is_no_selection_gives_no_collection) {
    for (const char* text :
         {"no selection", "<Selection>", "<Other/>", "<CollectionBackup></CollectionBackup>",
          "<CollectionBackup><Pathnode id=\"Root\" loc=\"0\"/></CollectionBackup>",
          "<Selection><Items><Item><Path>Root.Feed</Path></Item></Items></Selection><More/>"}) {
        EXPECT_EQ(kResultFail, Refuse(text, static_cast<std::int32_t>(std::strlen(text)))) << text;
    }
}

TEST_F(Paste, what_is_no_node_is_refused) {
    EXPECT_EQ(kResultPointer, PasteText(node_.Get(), kSelection, 5, nullptr));
    EXPECT_EQ(kResultPointer, Refused<IQSICollection>([&](IQSICollection** out) {
                  return PasteText(nullptr, kSelection, 5, out);
              }));
    const auto children = NodeAt(root_);
    const auto walk =
        Take<IQSINodeIterator>([&](IQSINodeIterator** out) { return children->GetChildren(out); });
    EXPECT_EQ(kResultNoInterface, Refused<IQSICollection>([&](IQSICollection** out) {
                  return PasteText(walk.Get(), kSelection, 5, out);
              }));
}

}  // namespace

}  // namespace fixtop
