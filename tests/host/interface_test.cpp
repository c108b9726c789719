// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "fixtop/host/text.h"
#include "fixtop/host/var_description.h"
#include "support/scripted_host.h"

namespace fixtop {

namespace {

using host::VarDescription;

TEST(HostText, search_answers_the_place_or_the_length) {
    const host::Text text("FlowSht.1/Solver.400");
    EXPECT_EQ(7u, text.Search('.'));
    EXPECT_EQ(9u, text.Search('/'));
    EXPECT_EQ(20u, text.Search('#'));
    EXPECT_EQ(0u, host::TheEmptyText.Search('a'));
}

TEST(HostText, compares_and_joins_with_texts_and_characters) {
    const host::Text text("Feed");
    EXPECT_TRUE(text == host::Text("Feed"));
    EXPECT_TRUE(text == "Feed");
    EXPECT_TRUE(text != host::Text("feed"));
    EXPECT_TRUE(text != "feed");
    EXPECT_EQ("Feed.1", (text + ".1").Str());
    EXPECT_EQ("FeedFeed", (text + text).Str());
    EXPECT_TRUE(host::Text(nullptr).IsEmpty());
}

TEST(HostFileName, splits_folder_and_name) {
    struct Case {
        const char* path;
        const char* extension;
        const char* folder;
        const char* name;
    };
    const Case cases[] = {
        {"/cases/plant.hsc", "", "/cases/", "plant"},
        {"C:\\cases\\plant.hsc", "", "C:\\cases\\", "plant"},
        {"plant", ".hsc", "", "plant"},
        {"/cases.d/plant", "", "/cases.d/", "plant"},
        {"", "", "", ""},
    };
    for (const Case& each : cases) {
        const host::FileName file(host::Text(each.path), host::Text(each.extension));
        EXPECT_EQ(each.folder, file.DriveAndPath().Str()) << each.path;
        EXPECT_EQ(each.name, file.Name().Str()) << each.path;
    }
}

TEST(HostList, iterator_walks_and_answers_null_off_the_list) {
    scripted::List list;
    scripted::Plain one, two, three;
    for (host::Viewable* each : {&one, &two, &three}) list.Add(each);
    host::FlowSheetObjectIterator walk(&list);
    EXPECT_EQ(nullptr, walk.Cursor()) << "on no element before the first move";
    EXPECT_EQ(&one, walk.Reset());
    EXPECT_EQ(&three, walk.EntryAt(2));
    EXPECT_EQ(nullptr, walk.EntryAt(3));
    EXPECT_EQ(&one, walk.Current()) << "looking at another does not move";
    EXPECT_EQ(&two, walk.Next());
    host::FlowSheetObjectIterator copy(walk);
    EXPECT_EQ(&three, copy.Next());
    EXPECT_EQ(&two, walk.Current()) << "a copy moves alone";
    EXPECT_EQ(nullptr, copy.Next());
    EXPECT_EQ(nullptr, copy.Cursor());
    EXPECT_EQ(&three, copy.Last());
    EXPECT_EQ(&two, copy.Prev());
    EXPECT_EQ(static_cast<host::Viewable*>(&two), copy.Cursor()->element);
    EXPECT_EQ(copy.Cursor()->element, *reinterpret_cast<void* const*>(copy.Cursor()))
        << "the first word of a holder";
    EXPECT_EQ(&one, copy.Prev());
    EXPECT_EQ(nullptr, copy.Prev());
    EXPECT_EQ(nullptr, copy.Cursor());
    EXPECT_EQ(nullptr, copy.Next()) << "off the list there is no next";
    EXPECT_EQ(nullptr, host::FlowSheetObjectIterator(nullptr).Reset());
}

TEST(HostDescription, bounds_beyond_the_count_are_empty) {
    const host::DimInfo bounds;
    EXPECT_EQ(0u, bounds.count);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(0, bounds.low[i]);
        EXPECT_EQ(-1, bounds.high[i]);
    }
}

TEST(HostDescription, answers_what_the_host_has_stated) {
    const VarDescription::Facts facts = {
        host::Text(":Double.501.[]"), host::kPartReal, 501, 9, 3, -1.5, 2.5, true, false, 77};
    const VarDescription plain(facts);
    EXPECT_FALSE(plain.IsEmpty());
    EXPECT_EQ(":Double.501.[]", plain.GetMoniker().Str());
    EXPECT_EQ(1, plain.Kind());
    EXPECT_EQ(501, plain.Number());
    EXPECT_EQ(9, plain.Type());
    EXPECT_EQ(3, plain.UnitType());
    EXPECT_EQ(-1.5, plain.MinValue());
    EXPECT_EQ(2.5, plain.MaxValue());
    EXPECT_TRUE(plain.NextNotFollowed());
    EXPECT_FALSE(plain.ChainEnds());
    EXPECT_EQ(77u, plain.HostWord());
    VarDescription::Facts first = facts;
    first.next_not_followed = false;
    first.chain_ends = true;
    first.moniker = host::Text("A.1");
    const VarDescription chain(first, plain);
    EXPECT_FALSE(chain.NextNotFollowed());
    EXPECT_TRUE(chain.ChainEnds());
    EXPECT_EQ("A.1/:Double.501.[]", chain.GetMoniker().Str());
    VarDescription assigned;
    EXPECT_TRUE(assigned.IsEmpty());
    assigned = chain;
    EXPECT_TRUE(assigned.IsEqual(chain, false));
    EXPECT_EQ(501, assigned.GetVariablePart()->Number());
}

TEST(HostDescription, the_last_part_names_the_variable) {
    const VarDescription chain("FlowSht.1/Solver.400/:Boolean.302", 0);
    EXPECT_EQ(1, chain.Number());
    EXPECT_EQ(302, chain.GetVariablePart()->Number());
    EXPECT_EQ(400, chain.NextPart()->Number());
    EXPECT_EQ("FlowSht.1/Solver.400/:Boolean.302", chain.GetMoniker().Str());
    const VarDescription single(":Name.0", 0);
    EXPECT_EQ(nullptr, single.NextPart());
    EXPECT_EQ(&single, single.GetVariablePart());
    EXPECT_TRUE(host::TheEmptyVarDesc.IsEmpty());
    EXPECT_EQ("", host::TheEmptyVarDesc.GetMoniker().Str());
    EXPECT_EQ(host::kVariableUnitType, host::TheEmptyVarDesc.UnitType());
    EXPECT_EQ(-32767.0, host::TheEmptyVarDesc.MaxValue());
    EXPECT_EQ(-32767.0, host::TheEmptyVarDesc.MinValue());
    EXPECT_EQ(0, host::TheEmptyVarDesc.Number());
    EXPECT_EQ(0, host::TheEmptyVarDesc.Type());
    EXPECT_EQ(0, host::TheEmptyVarDesc.Kind());
    EXPECT_EQ(0u, host::TheEmptyVarDesc.HostWord());
    EXPECT_FALSE(host::TheEmptyVarDesc.NextNotFollowed());
    EXPECT_FALSE(host::TheEmptyVarDesc.ChainEnds());
}

TEST(HostDescription, offsets_fill_the_brackets_of_the_copy_alone) {
    const VarDescription array("A.1/:Double.501.[].[]", 0);
    VarDescription element(array);
    element.SetOffset(1, 4, false);
    EXPECT_EQ("A.1/:Double.501.[].4", element.GetFilledMoniker().Str());
    element.SetOffset(1, 2, true);
    EXPECT_EQ("A.1/:Double.501.[].6", element.GetFilledMoniker().Str());
    const int running[] = {7, 8};
    element.FillRunning(running, 2);
    EXPECT_EQ("A.1/:Double.501.7.8", element.GetFilledMoniker().Str());
    EXPECT_EQ("A.1/:Double.501.[].[]", element.GetMoniker().Str());
    EXPECT_EQ("A.1/:Double.501.[].[]", array.GetFilledMoniker().Str());
    element.SetOffset(3, 1, false);
    EXPECT_EQ("A.1/:Double.501.7.8", element.GetFilledMoniker().Str())
        << "three dimensions at most";
    EXPECT_EQ(8, element.GetVariablePart()->Offset(1));
    EXPECT_EQ(6, element.GetVariablePart()->ReplacedOffset(1));
    EXPECT_EQ(VarDescription::kNoOffset, array.GetVariablePart()->Offset(0));
    for (int outside : {-1, 3}) {
        EXPECT_EQ(VarDescription::kNoOffset, array.GetVariablePart()->Offset(outside));
        EXPECT_EQ(VarDescription::kNoOffset, array.GetVariablePart()->ReplacedOffset(outside));
    }
}

TEST(HostDescription, equality_counts_parts_and_offsets) {
    const VarDescription one("A.1/:D.[]", 0);
    VarDescription filled(one);
    EXPECT_TRUE(one.IsEqual(filled, false));
    filled.SetOffset(0, 3, false);
    EXPECT_FALSE(one.IsEqual(filled, false));
    EXPECT_TRUE(one.IsEqual(filled, true));
    EXPECT_FALSE(one.IsEqual(VarDescription("A.1", 0), false));
    EXPECT_FALSE(one.IsEqual(VarDescription("A.2/:D.[]", 0), false));
    EXPECT_FALSE(one.IsEqual(host::TheEmptyVarDesc, false));
    EXPECT_TRUE(host::TheEmptyVarDesc.IsEqual(VarDescription("", 0), false));
}

TEST(HostDescription, dimensions_are_asked_of_the_object_that_holds_the_variable) {
    scripted::Plain outer, inner;
    host::DimInfo own, held;
    own.count = held.count = 1;
    own.high[0] = 4;
    held.low[0] = 2;
    held.high[0] = 9;
    outer.dimensions["A.1/:D.[]"] = own;
    inner.dimensions[":D.[]"] = held;
    const VarDescription array("A.1/:D.[]", 0);
    host::DimInfo bounds;
    array.GetPathDimensions(&outer, bounds, host::kEmptyDimensionMarker);
    EXPECT_EQ(4, bounds.high[0]);
    outer.resolved["A.1/:D.[]"] = &inner;
    array.GetPathDimensions(&outer, bounds, host::kEmptyDimensionMarker);
    EXPECT_EQ(2, bounds.low[0]);
    EXPECT_EQ(9, bounds.high[0]);
    array.GetPathDimensions(nullptr, bounds, host::kEmptyDimensionMarker);
    EXPECT_EQ(0u, bounds.count);
}

}  // namespace

}  // namespace fixtop
