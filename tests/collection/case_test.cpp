// SPDX-License-Identifier: Apache-2.0
// Collections of cases: what is kept comes back, in both views, and follows what becomes of the
// case.

#include <cstdlib>
#include <filesystem>

#include "collection/case_fixture.h"

namespace fixtop {

namespace {

namespace fs = std::filesystem;

constexpr char kNothingRead[] = "No element under this node";

// Counts what it computes.
class CountingEngine final : public casehost::SolveEngine {
 public:
    CountingEngine(std::unique_ptr<casehost::SolveEngine> engine, int& solves)
        : engine_(std::move(engine)), solves_(solves) {}
    Outcome Prepare(const casehost::CaseData& problem) override {
        ++solves_;
        return engine_->Prepare(problem);
    }
    Outcome Step(int turn) override { return engine_->Step(turn); }
    const casehost::CaseData& Results() const override { return engine_->Results(); }

 private:
    std::unique_ptr<casehost::SolveEngine> engine_;
    int& solves_;
};

class CaseItems : public SelectedCase {
 protected:
    void SetUp() override {
        SelectedCase::SetUp();
        casehost::UseStandardParts(host_);
        const casehost::EngineMaker maker = host_.GetEngineMaker();
        host_.SetEngineMaker(
            [this, maker] { return std::make_unique<CountingEngine>(maker(), solves_); });
    }
    // Without the standard parts anew, which would bring their own engines.
    void OpenFile(const std::string& path_or_name) {
        ASSERT_TRUE(casehost::OpenCase(host_, path_or_name)) << path_or_name;
        OpenTop();
        root_ = Ref<FIEntry>::Adopt(FixtopOpenModel(top_.Get(), nullptr));
        ASSERT_TRUE(root_);
    }
    // All nodes down to a depth become items; how many.
    static int AddAll(FICollectionBase& items, FIIteratorBase& node, int depth) {
        if (!node.DownFirst()) return 0;
        int added = 0;
        do {
            FIValue path;
            FixtopPathTo(&node, path);
            EXPECT_TRUE(items.Add(node)) << path.ToText();
            ++added;
            const NodeRef below = NodeRef::Adopt(node.Copy());
            if (node.Depth() < depth) added += AddAll(items, *below, depth);
        } while (node.Next());
        return added;
    }
    // Each item refers to the node of the other: the same object, the same whole path.
    static void ExpectSameNodes(FICollectionBase& items, FICollectionBase& others) {
        ASSERT_EQ(items.Count(), others.Count());
        const auto it = Walk::Adopt(items.MakeIterator());
        const auto other = Walk::Adopt(others.MakeIterator());
        while (it->Next() && other->Next()) {
            const auto node = Ref<FIReferenceBase>::Adopt(it->GetNode());
            const auto same = Ref<FIReferenceBase>::Adopt(other->GetNode());
            FIValue path;
            it->GetPath(path);
            ASSERT_TRUE(node) << path.ToText();
            ASSERT_TRUE(same) << path.ToText();
            ASSERT_EQ(0, node->Compare(*same)) << path.ToText();
            const auto at = NodeRef::Adopt(node->Copy());
            const auto at_same = NodeRef::Adopt(same->Copy());
            ASSERT_EQ(FixtopObjectNumber(at.Get()), FixtopObjectNumber(at_same.Get()));
            FIValue whole;
            FIValue whole_same;
            at->GetPath(whole);
            at_same->GetPath(whole_same);
            ASSERT_EQ(whole.ToText(), whole_same.ToText());
        }
        for (const char* row : {"id", "value"}) {
            ASSERT_EQ(ValuesOf(items, row), ValuesOf(others, row));
        }
    }
    void ExpectComesBack(NodeRef root, int depth, int at_least) {
        const Collected items = MakeCollection();
        const char* more = std::getenv("FIXTOP_COLLECTION_DEPTH");
        if (more) depth += std::atoi(more);
        const int added = AddAll(*items, *NodeRef::Adopt(root->Copy()), depth);
        EXPECT_EQ(added, items->Count());
        EXPECT_LE(at_least, items->Count());
        if (more) std::printf("%d items down to level %d\n", items->Count(), depth);
        const std::string written = XmlOf(*items);
        const Collected again = MakeCollection();
        ASSERT_TRUE(again->Load(written.c_str(), *root));
        EXPECT_EQ(written, XmlOf(*again));
        ExpectSameNodes(*items, *again);
        EXPECT_EQ(PathsOf(*items), PathsOf(*again));
    }

    int solves_ = 0;
};

TEST_F(CaseItems, raw_items_are_kept_and_come_back) {
    OpenFile("demo");
    ExpectComesBack(Raw(), 6, 400);
}

TEST_F(CaseItems, neutral_items_are_kept_and_come_back) {
    OpenFile("demo");
    ExpectComesBack(Neutral(), 4, 300);
}

TEST_F(CaseItems, items_of_recorded_cases_are_kept_and_come_back) {
    const char* given = std::getenv("FIXTOP_CASES");
    const fs::path folder = fs::path(given ? given : FIXTOP_CASES) / "real";
    if (!fs::exists(folder)) GTEST_SKIP() << "no recorded cases";
    for (const auto& each : fs::directory_iterator(folder)) {
        if (each.path().extension() != ".dwxmz") continue;
        SCOPED_TRACE(each.path().filename().string());
        root_.Reset();
        OpenFile(each.path().string());
        ExpectComesBack(Raw(), 6, 50);
        ExpectComesBack(Neutral(), 3, 50);
    }
}

TEST_F(CaseItems, elements_of_the_neutral_view_are_called_by_their_keys) {
    OpenFile("demo");
    const Collected items = MakeCollection();
    EXPECT_LT(3, items->AddMatches(*Neutral(), FIValue("Flowsheet.Stream.MolarFlow")));
    const NodeRef node = At(Neutral(), "Flowsheet.Stream(Raw Gas).MolarFlow");
    EXPECT_EQ(0, items->IndexOf(items->Add(*node)));
    EXPECT_NE(std::string::npos, XmlOf(*items).find("<Pathnode id=\"Stream(Raw Gas)\">"));
    EXPECT_EQ("Flowsheet.Stream(Raw Gas).MolarFlow", PathsOf(*items)[0]);
    EXPECT_EQ("1000", ValuesOf(*items)[0]);
}

TEST_F(CaseItems, raw_items_keep_their_units) {
    OpenFile("demo");
    const NodeRef node = At(Raw(), std::string(kStreams) + ".Raw Gas.Temperature");
    const Collected items = MakeCollection();
    FIValue out;
    node->SetAttribute(FIValue("uom"), FIValue("K"), 0, out);
    ASSERT_TRUE(out.IsNull());
    items->Add(*node);
    EXPECT_EQ(Names({"303.15"}), ValuesOf(*items));
    EXPECT_NE(std::string::npos, XmlOf(*items).find(" loc=\"0\" uom=\"K\"/>"));
    const Collected again = MakeCollection();
    ASSERT_TRUE(again->Load(XmlOf(*items).c_str(), *Raw()));
    EXPECT_EQ(Names({"303.15"}), ValuesOf(*again));
    EXPECT_EQ(Names({"K"}), ValuesOf(*again, "uom"));
    const auto it = Walk::Adopt(again->MakeIterator());
    ASSERT_TRUE(it->Next());
    it->SetAttribute(FIValue("uom"), FIValue("F"), 0, out);
    EXPECT_TRUE(out.IsNull());
    EXPECT_EQ(Names({"86"}), ValuesOf(*again));
    EXPECT_NE(std::string::npos, XmlOf(*again).find(" uom=\"F\""));
    it->SetAttribute(FIValue("uom"), FIValue("kPa"), 0, out);
    EXPECT_EQ("Invalid unit for variable type", Shown(out));
    EXPECT_EQ(Names({"86"}), ValuesOf(*again));
}

TEST_F(CaseItems, neutral_items_keep_their_units_by_name) {
    OpenFile("demo");
    const NodeRef node = At(Neutral(), "Flowsheet.Stream(Raw Gas).Temperature");
    FIValue out;
    node->SetDisplayUnit(FIValue("K"), FIValue(), out);
    ASSERT_TRUE(out.IsNull());
    const Collected items = MakeCollection();
    items->Add(*node);
    EXPECT_EQ(Names({"303.15"}), ValuesOf(*items));
    EXPECT_NE(std::string::npos, XmlOf(*items).find(" loc=\"0\" uom=\"K\"/>"));
    const Collected again = MakeCollection();
    ASSERT_TRUE(again->Load(XmlOf(*items).c_str(), *Neutral()));
    EXPECT_EQ(Names({"303.15"}), ValuesOf(*again));
    EXPECT_EQ(Names({"K"}), ValuesOf(*again, "uom"));
    const auto it = Walk::Adopt(again->MakeIterator());
    ASSERT_TRUE(it->Next());
    it->SetDisplayUnit(FIValue("F"), FIValue(), out);
    EXPECT_TRUE(out.IsNull());
    EXPECT_EQ(Names({"86"}), ValuesOf(*again));
    EXPECT_NE(std::string::npos, XmlOf(*again).find(" uom=\"F\""));
}

// So that it is shown in that on a case whose units are others.
TEST_F(CaseItems, a_chosen_unit_that_is_the_node_s_own_is_kept) {
    OpenFile("demo");
    FIValue out;
    const NodeRef temperature = At(Neutral(), "Flowsheet.Stream(Raw Gas).Temperature");
    temperature->SetDisplayUnit(FIValue("C"), FIValue(), out);
    ASSERT_TRUE(out.IsNull());
    const Collected items = MakeCollection();
    items->Add(*temperature);
    EXPECT_NE(std::string::npos, XmlOf(*items).find(" loc=\"0\" uom=\"C\"/>"));
    const NodeRef pressure = NodeRef::Adopt(temperature->Copy());
    ASSERT_TRUE(pressure->Up() && pressure->SeekPath(FIValue("Pressure")));
    const Collected others = MakeCollection();
    others->Add(*pressure);
    EXPECT_EQ(std::string::npos, XmlOf(*others).find("uom")) << "it is chosen for temperatures";
}

// A unit of another quantity is kept, but nothing is shown in it.
TEST_F(CaseItems, a_unit_that_the_node_has_not_is_kept_and_not_shown) {
    OpenFile("demo");
    const Collected items = MakeCollection();
    items->Add(*At(Raw(), std::string(kStreams) + ".Raw Gas.Temperature"));
    const std::string plain = XmlOf(*items);
    std::string with_unit = plain;
    with_unit.replace(plain.find(" loc=\"0\""), 8, " loc=\"0\" uom=\"kPa\"");
    ASSERT_TRUE(items->Load(with_unit.c_str(), *Raw()));
    EXPECT_EQ(Names({"30"}), ValuesOf(*items));
    EXPECT_EQ(Names({"C"}), ValuesOf(*items, "uom"));
    EXPECT_EQ(with_unit, XmlOf(*items));
}

TEST_F(CaseItems, values_are_stored_in_a_unit_of_their_own) {
    OpenFile("demo");
    for (const NodeRef& root : {Raw(), Neutral()}) {
        const bool is_raw = root->SeekChild("appModel");
        if (is_raw) root->Up();
        const Collected items = MakeCollection();
        items->Add(*At(NodeRef::Adopt(root->Copy()),
                       is_raw ? std::string(kStreams) + ".Raw Gas.Temperature"
                              : "Flowsheet.Stream(Raw Gas).Temperature"));
        const FIValue kelvin = FIValue::OfReal(is_raw ? 310.15 : 308.15);
        FIValue out("left over");
        items->SetValues(FIValue("value"), &kelvin, 1, FIValue("K"), &out);
        EXPECT_EQ("(NULL)", Shown(out));
        EXPECT_EQ(Names({is_raw ? "37" : "35"}), ValuesOf(*items));
        items->SetValues(FIValue("value"), &kelvin, 1, FIValue("kPa"), &out);
        EXPECT_EQ("Unable to find unit", Shown(out));
        EXPECT_EQ(Names({is_raw ? "37" : "35"}), ValuesOf(*items));
    }
}

TEST_F(CaseItems, many_values_are_stored_with_one_solve) {
    OpenFile("demo");
    for (const bool is_raw : {true, false}) {
        const Collected items = MakeCollection();
        const NodeRef root = is_raw ? Raw() : Neutral();
        for (const char* variable : {"Temperature", "Pressure"}) {
            items->Add(*At(NodeRef::Adopt(root->Copy()),
                           is_raw ? std::string(kStreams) + ".Raw Gas." + variable
                                  : std::string("Flowsheet.Stream(Raw Gas).") + variable));
        }
        const Collected flow = MakeCollection();
        flow->Add(*At(Raw(), std::string(kStreams) + ".Sales Gas.Molar Flow"));
        const Names before = ValuesOf(*flow);
        const FIValue values[] = {FIValue::OfReal(is_raw ? 20 : 25),
                                  FIValue::OfReal(is_raw ? 5500 : 5600)};
        FIValue outs[2];
        solves_ = 0;
        items->SetValues(FIValue("value"), values, 2, FIValue(), outs);
        EXPECT_EQ("(NULL)", Shown(outs[0]));
        EXPECT_EQ("(NULL)", Shown(outs[1]));
        EXPECT_EQ(1, solves_);
        // Who waits for a store has the results.
        EXPECT_NE(before, ValuesOf(*flow));
        EXPECT_EQ(Names({is_raw ? "20" : "25", is_raw ? "5500" : "5600"}), ValuesOf(*items));
    }
}

TEST_F(CaseItems, what_is_refused_is_told_beside_what_is_stored) {
    OpenFile("demo");
    const Collected items = MakeCollection();
    items->Add(*At(Raw(), std::string(kStreams) + ".Raw Gas.Temperature"));
    items->Add(*At(Raw(), std::string(kStreams) + ".Sales Gas.Molar Flow"));
    const FIValue values[] = {FIValue::OfReal(31), FIValue::OfReal(1)};
    FIValue outs[2];
    items->SetValues(FIValue("value"), values, 2, FIValue(), outs);
    EXPECT_TRUE(outs[0].IsNull());
    EXPECT_FALSE(outs[1].IsNull());
    EXPECT_EQ("31", ValuesOf(*items)[0]);
    EXPECT_NE("1", ValuesOf(*items)[1]);
}

// ---- what becomes of the case

struct Ear {
    std::vector<int> kinds;
    std::function<void()> act;

    static void Told(void* owner, void*, FICollectionElement*, int kind) {
        auto* self = static_cast<Ear*>(owner);
        self->kinds.push_back(kind);
        if (self->act) self->act();
    }
};

class WatchedCase : public CaseItems {
 protected:
    void SetUp() override {
        CaseItems::SetUp();
        OpenFile("demo");
        raw_->Add(*At(Raw(), std::string(kStreams) + ".Raw Gas.Temperature"));
        neutral_->Add(*At(Neutral(), "Flowsheet.Stream(Raw Gas).Temperature"));
        for (FICollectionBase* items : {raw_.Get(), neutral_.Get()}) {
            items->Subscribe(&EarOf(*items), nullptr, Ear::Told);
            items->StartWatching();
        }
    }
    void TearDown() override {
        raw_.Reset();
        neutral_.Reset();
        CaseItems::TearDown();
    }
    Ear& EarOf(FICollectionBase& items) { return &items == raw_.Get() ? raw_ear_ : neutral_ear_; }
    template <class Look>
    void ForBoth(Look look) {
        for (FICollectionBase* items : {raw_.Get(), neutral_.Get()}) look(*items, EarOf(*items));
    }

    const Collected made_[2] = {MakeCollection(), MakeCollection()};
    Collected raw_ = made_[0];
    Collected neutral_ = made_[1];
    Ear raw_ear_;
    Ear neutral_ear_;
};

TEST_F(WatchedCase, a_store_of_somebody_else_is_told) {
    FIValue out;
    At(Raw(), std::string(kStreams) + ".Raw Gas.Temperature")
        ->SetAttribute(FIValue("value"), FIValue::OfReal(44), 0, out);
    ForBoth([](FICollectionBase& items, Ear& ear) {
        EXPECT_FALSE(ear.kinds.empty());
        EXPECT_EQ(Names({"44"}), ValuesOf(items));
    });
}

// Also of the root, and with the lists of subscribers emptied by another client that has left.
TEST_F(WatchedCase, a_change_is_told_once_of_each_item) {
    raw_->Add(*Raw());
    raw_->Add(*At(Raw(), std::string(kStreams) + ".Raw Gas"));
    neutral_->Add(*Neutral());
    neutral_->Add(*At(Neutral(), "Flowsheet.Stream(Raw Gas)"));
    FixtopNotify notify = nullptr;
    Ref<FIEntry> other = Ref<FIEntry>::Adopt(GetTopFIEntry(&notify));
    for (const char* name : {"Crude Gas", "Raw Gas"}) {
        ASSERT_TRUE(Open().Rename(Stream(name[0] == 'C' ? "Raw Gas" : "Crude Gas"), name));
        ForBoth([](FICollectionBase&, Ear& ear) {
            EXPECT_EQ(std::vector<int>(3, kValueChanged), ear.kinds);
            ear.kinds.clear();
        });
        other.Reset();
    }
}

TEST_F(WatchedCase, the_deletion_of_the_object_is_told_once) {
    ASSERT_TRUE(Open().Delete(Stream("Raw Gas")));
    host_.RunHostLoop();
    ForBoth([](FICollectionBase& items, Ear& ear) {
        ValuesOf(items);
        EXPECT_EQ(Names({"Node deleted"}), ValuesOf(items));
        EXPECT_EQ(std::vector<int>({kNodeDeleted}), ear.kinds);
    });
    // What is loaded anew does not find it.
    const Collected again = MakeCollection();
    ASSERT_TRUE(again->Load(XmlOf(*raw_).c_str(), *Raw()));
    EXPECT_EQ(Names({kNothingRead}), ValuesOf(*again));
}

TEST_F(WatchedCase, a_renamed_object_is_followed) {
    ASSERT_TRUE(Open().Rename(Stream("Raw Gas"), "Crude Gas"));
    ForBoth([](FICollectionBase& items, Ear&) { EXPECT_EQ(Names({"30"}), ValuesOf(items)); });
    const auto it = Walk::Adopt(raw_->MakeIterator());
    ASSERT_TRUE(it->Next());
    const auto node = Ref<FIReferenceBase>::Adopt(it->GetNode());
    FIValue path;
    node->GetPath(path);
    EXPECT_EQ("Top.appModel.FlowSheetObjects.Streams.Crude Gas.Temperature", Shown(path));
}

// Also when another takes the name, and when two change theirs.
TEST_F(WatchedCase, renamed_objects_are_kept_under_the_names_that_they_have) {
    const std::string streams = kStreams;
    raw_->Add(*At(Raw(), streams + ".Sales Gas"));
    raw_->Add(*At(Raw(), streams + ".Sales Gas.Temperature"));
    raw_->Add(*At(Raw(), streams + ".Raw Gas"));
    const Names paths = ValuesOf(*raw_, "path");
    ASSERT_TRUE(Open().Rename(Stream("Raw Gas"), "Aside"));
    ASSERT_TRUE(Open().Rename(Stream("Sales Gas"), "Raw Gas"));
    ASSERT_TRUE(Open().Rename(Stream("Aside"), "Sales Gas"));
    const Names renamed = {"Top." + streams + ".Sales Gas.Temperature",
                           "Top." + streams + ".Raw Gas", "Top." + streams + ".Raw Gas.Temperature",
                           "Top." + streams + ".Sales Gas"};
    EXPECT_EQ(renamed, ValuesOf(*raw_, "path"));
    EXPECT_NE(paths, renamed);
    const std::string kept = XmlOf(*raw_);
    XmlOf(*neutral_);
    EXPECT_EQ(Names({streams + ".Sales Gas.Temperature", streams + ".Raw Gas",
                     streams + ".Raw Gas.Temperature", streams + ".Sales Gas"}),
              PathsOf(*raw_));
    const Collected again = MakeCollection();
    ASSERT_TRUE(again->Load(kept.c_str(), *Raw()));
    ExpectSameNodes(*raw_, *again);
    EXPECT_EQ(kept, XmlOf(*again));
    EXPECT_EQ(Names({"Flowsheet.Stream(Sales Gas).Temperature"}), PathsOf(*neutral_));
}

TEST_F(WatchedCase, a_node_under_the_former_name_of_an_item_is_another_item) {
    const std::string temperature = std::string(kStreams) + ".Raw Gas.Temperature";
    ASSERT_TRUE(Open().Rename(Stream("Raw Gas"), "Crude Gas"));
    ASSERT_TRUE(Open().Rename(Stream("Sales Gas"), "Raw Gas"));
    FICollectionElement* const known = raw_->ItemAt(0);
    FICollectionElement* const added = raw_->Add(*At(Raw(), temperature));
    ASSERT_TRUE(added);
    EXPECT_NE(known, added);
    EXPECT_EQ(Names({std::string(kStreams) + ".Crude Gas.Temperature", temperature}),
              PathsOf(*raw_));
    EXPECT_EQ("30", ValuesOf(*raw_)[0]);
}

TEST_F(WatchedCase, an_item_that_is_gone_gives_way_to_one_that_is_called_so_now) {
    raw_->Add(*At(Raw(), std::string(kStreams) + ".Sales Gas.Temperature"));
    ASSERT_TRUE(Open().Delete(Stream("Raw Gas")));
    host_.RunHostLoop();
    ASSERT_TRUE(Open().Rename(Stream("Sales Gas"), "Raw Gas"));
    EXPECT_EQ(2, raw_->Count());
    EXPECT_EQ("Node invalid", ValuesOf(*raw_)[0]);
    XmlOf(*raw_);
    EXPECT_EQ(Names({std::string(kStreams) + ".Raw Gas.Temperature"}), PathsOf(*raw_));
    EXPECT_EQ(Names({"Top." + std::string(kStreams) + ".Raw Gas.Temperature"}),
              ValuesOf(*raw_, "path"));
}

TEST_F(WatchedCase, of_a_closed_case_nothing_is_read) {
    host_.Close(Open());
    host_.RunHostLoop();
    ForBoth([](FICollectionBase& items, Ear& ear) {
        EXPECT_EQ(std::vector<int>({kNodeDeleted}), ear.kinds);
        EXPECT_EQ(Names({"Node deleted"}), ValuesOf(items));
        EXPECT_EQ(1, items.Count());
        const FIValue value = FIValue::OfReal(1);
        FIValue out;
        items.SetValues(FIValue("value"), &value, 1, FIValue(), &out);
        EXPECT_EQ("Node deleted", Shown(out));
        const std::string kept = XmlOf(items);
        EXPECT_TRUE(items.FromXml(kept.c_str()));
        EXPECT_EQ(Names({kNothingRead}), ValuesOf(items));
        EXPECT_EQ(kept, XmlOf(items));
    });
}

TEST_F(WatchedCase, the_root_of_a_closed_case_is_not_found_again) {
    raw_->Add(*Raw());
    host_.Close(Open());
    host_.RunHostLoop();
    ASSERT_TRUE(raw_->FromXml(XmlOf(*raw_).c_str()));
    EXPECT_EQ(Names({kNothingRead, kNothingRead}), ValuesOf(*raw_));
}

TEST_F(WatchedCase, of_a_host_that_was_taken_out_nothing_is_read) {
    FixtopInstallHost(nullptr);
    ForBoth([](FICollectionBase& items, Ear& ear) {
        EXPECT_EQ(std::vector<int>({kNodeDeleted}), ear.kinds);
        EXPECT_EQ(Names({"Node deleted"}), ValuesOf(items));
    });
}

TEST_F(WatchedCase, a_subscriber_may_close_the_case_or_drop_everything_within_its_call) {
    raw_ear_.act = [this] {
        raw_ear_.act = nullptr;
        raw_->Unsubscribe(&raw_ear_, nullptr);
        raw_->Clear();
        neutral_->StopWatching();
        host_.Close(Open());
    };
    FIValue out;
    At(Raw(), std::string(kStreams) + ".Raw Gas.Temperature")
        ->SetAttribute(FIValue("value"), FIValue::OfReal(44), 0, out);
    host_.RunHostLoop();
    EXPECT_EQ(0, raw_->Count());
    EXPECT_EQ(Names({"Node deleted"}), ValuesOf(*neutral_));
}

}  // namespace

}  // namespace fixtop
