// SPDX-License-Identifier: Apache-2.0
// The selection that a case publishes in a file beside its document.

#include "collection/case_fixture.h"
#include "support/temporary_folder.h"

namespace fixtop {

namespace {

class PublishedFile : public SelectedCase {
 protected:
    void SetUp() override {
        SelectedCase::SetUp();
        OpenNeutral("demo");
        ASSERT_TRUE(host_.Save(Open(), folder_.File("plant.json")));
    }
    void Publish(FICollectionBase& items) { folder_.Write("plant.atpub", XmlOf(items)); }
    NodeRef List() const { return At(Raw(), "QSI Published Variables"); }
    Names Children() const {
        Names names;
        const NodeRef it = List();
        for (bool on = it->DownFirst(); on; on = it->Next()) {
            FIValue name;
            it->GetName(name);
            names.push_back(Shown(name));
        }
        return names;
    }
    static std::string Read(FIIteratorBase& it, const char* name) {
        FIValue value;
        it.GetAttribute(FIValue(name), value);
        return Shown(value);
    }

    const TemporaryFolder folder_;
};

TEST_F(PublishedFile, that_is_not_there_lists_nothing) {
    EXPECT_TRUE(Children().empty());
    EXPECT_EQ("0", Read(*List(), "has_children"));
}

TEST_F(PublishedFile, lists_its_items_by_their_whole_paths) {
    const Collected items = MakeCollection();
    for (const char* path : {".Sales Gas.Molar Flow", ".Raw Gas.Temperature", ".Raw Gas"}) {
        ASSERT_TRUE(items->Add(*At(Raw(), kStreams + std::string(path))));
    }
    Publish(*items);
    EXPECT_EQ("1", Read(*List(), "has_children"));
    EXPECT_EQ(Names({"\"Top.appModel.FlowSheetObjects.Streams.Sales Gas.Molar Flow\"",
                     "\"Top.appModel.FlowSheetObjects.Streams.Raw Gas.Temperature\"",
                     "\"Top.appModel.FlowSheetObjects.Streams.Raw Gas\""}),
              Children());
    const NodeRef temperature = List();
    ASSERT_TRUE(temperature->Down(1));
    EXPECT_EQ("30", Read(*temperature, "value"));
    EXPECT_EQ("C", Read(*temperature, "uom"));
    EXPECT_FALSE(temperature->DownFirst());
    const NodeRef stream = List();
    ASSERT_TRUE(stream->Down(2));
    EXPECT_TRUE(stream->CanDescend());
    ASSERT_TRUE(stream->DownFirst());
    FIValue name;
    stream->GetName(name);
    EXPECT_EQ(0u, Shown(name).find("\"Top.appModel.FlowSheetObjects.Streams.Raw Gas."));
}

TEST_F(PublishedFile, shows_its_items_in_their_units) {
    const Collected items = MakeCollection();
    const NodeRef node = At(Raw(), kStreams + std::string(".Raw Gas.Temperature"));
    FIValue out;
    node->SetAttribute(FIValue("uom"), FIValue("K"), 0, out);
    items->Add(*node);
    Publish(*items);
    const NodeRef shown = List();
    ASSERT_TRUE(shown->DownFirst());
    EXPECT_EQ("303.15", Read(*shown, "value"));
}

TEST_F(PublishedFile, paths_that_are_shown_lead_back) {
    const Collected items = MakeCollection();
    items->AddMatches(*Raw(), FIValue("appModel.FlowSheetObjects.Streams.*.Temperature"));
    Publish(*items);
    const NodeRef it = List();
    int found = 0;
    for (bool on = it->DownFirst(); on; on = it->Next()) {
        FIValue path;
        it->GetPath(path);
        const NodeRef again = Raw();
        EXPECT_TRUE(again->SeekPath(FIValue(path.CStr() + std::string("Top.").size())))
            << path.ToText();
        EXPECT_EQ(Read(*it, "value"), Read(*again, "value"));
        ++found;
    }
    EXPECT_EQ(items->Count(), found);
}

TEST_F(PublishedFile, children_equal_those_of_the_list_opened_again_and_paths_lead_to_each) {
    const Collected items = MakeCollection();
    for (const char* path : {".Sales Gas.Molar Flow", ".Raw Gas.Temperature", ".Raw Gas"}) {
        ASSERT_TRUE(items->Add(*At(Raw(), kStreams + std::string(path))));
    }
    Publish(*items);
    const NodeRef list = List();
    std::vector<NodeRef> shown;
    for (bool on = list->DownFirst(); on; on = list->Next()) {
        shown.push_back(NodeRef::Adopt(list->Copy()));
    }
    const NodeRef below = NodeRef::Adopt(shown.back()->Copy());
    for (bool on = below->DownFirst(); on; on = below->Next()) {
        shown.push_back(NodeRef::Adopt(below->Copy()));
    }
    ASSERT_LT(5u, shown.size());
    const Collected chosen = MakeCollection();
    for (const NodeRef& each : shown) {
        FIValue path;
        FixtopPathTo(each.Get(), path);
        const NodeRef again = At(Raw(), path.ToText());
        EXPECT_TRUE(each->Equal(*again)) << path.ToText();
        EXPECT_EQ(0, each->Compare(*again));
        EXPECT_EQ(Read(*each, "value"), Read(*again, "value"));
        for (const NodeRef& other : shown) {
            EXPECT_EQ(&other == &each, other->Equal(*again)) << path.ToText();
        }
        EXPECT_TRUE(chosen->Add(*each)) << path.ToText();
    }
    EXPECT_EQ(static_cast<int>(shown.size()), chosen->Count());
    const Collected loaded = MakeCollection();
    ASSERT_TRUE(loaded->Load(XmlOf(*chosen).c_str(), *Raw()));
    EXPECT_EQ(PathsOf(*chosen), PathsOf(*loaded));
    EXPECT_EQ(ValuesOf(*chosen), ValuesOf(*loaded));
    EXPECT_EQ(XmlOf(*chosen), XmlOf(*loaded));
}

TEST_F(PublishedFile, a_list_of_another_text_is_another_list) {
    const Collected items = MakeCollection();
    ASSERT_TRUE(items->Add(*At(Raw(), kStreams + std::string(".Raw Gas.Temperature"))));
    Publish(*items);
    const NodeRef before = List();
    ASSERT_TRUE(before->DownFirst());
    ASSERT_TRUE(items->Add(*At(Raw(), kStreams + std::string(".Raw Gas.Pressure"))));
    Publish(*items);
    const NodeRef after = List();
    ASSERT_TRUE(after->DownFirst());
    EXPECT_EQ(Read(*before, "value"), Read(*after, "value"));
    EXPECT_FALSE(before->Equal(*after));
}

TEST_F(PublishedFile, that_publishes_itself_ends) {
    folder_.Write("plant.atpub",
                  "<CollectionBackup><Pathnode id=\"Top\"><Pathnode id=\"QSI Published Variables\">"
                  "<Pathnode id=\"0\"/></Pathnode></Pathnode></CollectionBackup>");
    EXPECT_EQ(1u, Children().size());
    const NodeRef it = List();
    ASSERT_TRUE(it->DownFirst());
    EXPECT_EQ("(NULL)", Read(*it, "value"));
}

TEST_F(PublishedFile, that_is_no_selection_lists_nothing) {
    for (const char* text : {"", "x", "<CollectionBackup>", "<Other/>"}) {
        folder_.Write("plant.atpub", text);
        EXPECT_TRUE(Children().empty()) << text;
    }
}

TEST_F(PublishedFile, of_a_closed_case_lists_nothing) {
    const Collected items = MakeCollection();
    items->Add(*At(Raw(), kStreams + std::string(".Raw Gas.Temperature")));
    Publish(*items);
    const NodeRef it = List();
    const NodeRef shown = NodeRef::Adopt(it->Copy());
    ASSERT_TRUE(shown->DownFirst());
    host_.Close(Open());
    host_.RunHostLoop();
    EXPECT_FALSE(it->DownFirst());
    EXPECT_EQ("Node deleted", Read(*shown, "value"));
}

}  // namespace

}  // namespace fixtop
