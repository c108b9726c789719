// The whole tree of live cases: every node is reached once, answers, and is found again by what it
// says of its place.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "casehost/standard_host.h"
#include "framework/fi_iterator.h"
#include "host/and_c.h"
#include "live/case.h"
#include "support/host_reading.h"

namespace {

using NodeRef = Ref<FIIteratorBase>;

struct Counts {
    long nodes = 0;
    long arrays = 0;
    long elements = 0;
    int depth = 0;
};

class CaseWalk : public testing::Test {
 protected:
    ~CaseWalk() override { host::SetInstalledServices(nullptr); }

    void Open(const std::string& name) {
        casehost::UseStandardParts(host);
        const casehost::OpenResult result = casehost::OpenCase(host, name);
        ASSERT_TRUE(result) << name;
        host::SetInstalledServices(&host.Services());
    }
    NodeRef Model() {
        auto models = Ref<HAandCContext>::Share(new HAandCContext(host.ActiveCase(), {}));
        return NodeRef::Adopt(new FIIterator(Child(*models, "appModel").Get(), false));
    }
    host::FlowSheet& Main() { return *host.ActiveCase()->MainFlowSheet(); }
    NodeRef At(const char* path) {
        NodeRef node = Model();
        EXPECT_TRUE(node->SeekPath(FIValue(path))) << path;
        return node;
    }
    static std::string Store(FIIteratorBase& node, const FIValue& value) {
        FIValue out;
        node.SetAttribute(FIValue("value"), value, 0, out);
        return Shown(out);
    }
    static std::string NameAt(FIIteratorBase& node) {
        FIValue name;
        node.GetName(name);
        return Shown(name);
    }

    // Every node below, with `visit` on each; false when the limit is passed.
    template <class Visit>
    bool Walk(FIIteratorBase& node, Counts& counts, const Visit& visit) {
        if (++counts.nodes > kLimit) return false;
        counts.depth = std::max(counts.depth, node.Depth());
        const std::string type = Read(node, "type");
        counts.arrays += type.ends_with("Array");
        visit(node);
        NodeRef child = NodeRef::Adopt(node.Copy());
        if (!child->DownFirst()) return true;
        do {
            counts.elements += type == "Array";
            if (!Walk(*child, counts, visit)) return false;
        } while (child->Next());
        return true;
    }
    void WalkAll(const std::string& name) {
        for (const bool attachments : {true, false}) {
            Counts counts;
            NodeRef model = Model();
            FIValue out;
            model->SetAttribute(FIValue("attachments"), FIValue::OfInt(attachments), 0, out);
            const bool ended = Walk(*model, counts, [](FIIteratorBase& node) {
                for (const char* row : {"value", "uom", "status", "moniker", "is_container"}) {
                    Read(node, row);
                }
            });
            std::printf("%s, attachments %s: %ld nodes, %ld arrays, %ld elements, depth %d\n",
                        name.c_str(), attachments ? "followed" : "not followed", counts.nodes,
                        counts.arrays, counts.elements, counts.depth);
            EXPECT_TRUE(ended) << name << " is still not at its end";
            EXPECT_LT(20, counts.arrays) << name;
            EXPECT_LT(100, counts.elements) << name;
        }
    }

    static constexpr long kLimit = 2000000;
    casehost::CaseHost host{false};
};

std::filesystem::path RecordedCases() {
    const char* given = std::getenv("FIXTOP_CASES");
    return std::filesystem::path(given ? given : FIXTOP_CASES) / "real";
}

TEST_F(CaseWalk, a_walk_over_the_built_in_case_ends) {
    Open("demo");
    WalkAll("demo");
}

TEST_F(CaseWalk, a_walk_over_every_recorded_case_ends) {
    if (!std::filesystem::is_directory(RecordedCases())) {
        GTEST_SKIP() << "no sample cases in " << RecordedCases();
    }
    for (const auto& file : std::filesystem::directory_iterator(RecordedCases())) {
        if (file.path().extension() != ".dwxmz") continue;
        Open(file.path().string());
        WalkAll(file.path().filename().string());
    }
}

TEST_F(CaseWalk, monikers_lead_back_to_their_variables_and_elements) {
    Open("demo");
    NodeRef flowsheet = At("FlowSheetObjects");
    Counts counts;
    long opened = 0;
    EXPECT_TRUE(Walk(*flowsheet, counts, [&](FIIteratorBase& node) {
        const std::string moniker = Read(node, "moniker");
        // Below attachments a moniker names the object itself.
        if (moniker == "(NULL)" || node.Depth() < 4) return;
        // A key is not quoted: behind a dot in a name another step begins.
        FIValue path;
        node.GetPath(path);
        if (path.ToText().find('"') != std::string::npos) return;
        NodeRef model = Model();
        NodeRef found = NodeRef::Adopt(model->OpenAttribute(FIValue(moniker.c_str())));
        ASSERT_TRUE(found) << moniker;
        if (moniker.find("[]") != std::string::npos) return;
        EXPECT_EQ(NameAt(node), NameAt(*found)) << moniker;
        EXPECT_EQ(Read(node, "value"), Read(*found, "value")) << moniker;
        ++opened;
    }));
    EXPECT_LT(1000, opened);
}

TEST_F(CaseWalk, host_paths_open_elements_by_name_and_by_index) {
    Open("demo");
    struct Case {
        const char* path;
        const char* name;
    };
    const Case cases[] = {
        {"/FlowSht.1/StreamObject.400(Raw Gas):Double.501.2", "Methane"},
        {"/FlowSht.1/StreamObject.400(Raw Gas)/:Double.501.2", "Methane"},
        {"/FlowSht.1/StreamObject.400(Raw Gas)/:Double.501(Methane)", "Methane"},
        {"/FlowSht.1/StreamObject.400(Raw Gas):Double.501(Methane)", "Methane"},
        {"/FlowSht.1/StreamObject.400Raw Gas:Double.501(Elem2)", "Methane"},
        {"/FlowSht.1/StreamObject.400(Raw Gas):Double.201", "Temperature"},
        {"/FlowSht.1/StreamObject.400(Raw Gas):Double.501.99", nullptr},
        {"/FlowSht.1/StreamObject.400(Raw Gas):Double.501(Water)", nullptr},
        {"/FlowSht.1/StreamObject.400(No Gas):Double.501.2", nullptr},
    };
    for (const Case& each : cases) {
        NodeRef model = Model();
        NodeRef found = NodeRef::Adopt(model->OpenAttribute(FIValue(each.path)));
        ASSERT_EQ(each.name != nullptr, static_cast<bool>(found)) << each.path;
        if (found) {
            EXPECT_EQ(each.name, NameAt(*found)) << each.path;
        }
    }
}

TEST_F(CaseWalk, fractions_are_stored_where_they_are_meant) {
    Open("demo");
    NodeRef ethane = At("FlowSheetObjects.Streams.Raw Gas.Comp Mole Frac.Ethane");
    NodeRef methane = At("FlowSheetObjects.Streams.Raw Gas.Comp Mole Frac.Methane");
    ASSERT_EQ("REAL 0.1", Read(*ethane, "value"));
    ASSERT_EQ("REAL 0.75", Read(*methane, "value"));
    EXPECT_EQ("(NULL)", Store(*ethane, FIValue::OfReal(1.1)));
    // The others make 0.9, so that all were divided by two.
    FIValue value;
    ethane->GetAttribute(FIValue("value"), value);
    EXPECT_DOUBLE_EQ(0.55, value.AsDouble());
    methane->GetAttribute(FIValue("value"), value);
    EXPECT_DOUBLE_EQ(0.375, value.AsDouble());
    EXPECT_EQ("Specified", Read(*ethane, "status"));
    NodeRef sales = At("FlowSheetObjects.Streams.Sales Gas.Comp Mole Frac.Ethane");
    EXPECT_EQ("Calculated", Read(*sales, "status"));
    EXPECT_NE("(NULL)", Read(*sales, "value")) << "the case was solved inside the store";
}

TEST_F(CaseWalk, a_random_walk_with_stores_and_deletions_stays_whole) {
    Open("demo");
    std::mt19937 random(7);
    const auto one_of = [&](int count) { return static_cast<int>(random() % count); };
    NodeRef it = Model();
    int stored = 0;
    int deleted = 0;
    for (int step = 0; step < 20000; ++step) {
        switch (one_of(6)) {
            case 0:
            case 1:
                it->Down(one_of(9));
                break;
            case 2:
                it->Next();
                break;
            case 3:
                if (it->Depth() > 8 || one_of(3) == 0) it->Up();
                break;
            case 4: {
                if (one_of(4)) break;
                FIValue value;
                it->GetAttribute(FIValue("value"), value);
                if (value.Kind() == FIValue::kReal) stored += Store(*it, value) == "(NULL)";
                break;
            }
            default: {
                if (one_of(150)) break;
                host::FlowSheetObjectIterator objects = Main().Objects();
                host::Viewable* object = objects.EntryAt(one_of(30));
                deleted += object && host.ActiveLiveCase()->Delete(object);
                break;
            }
        }
        FIValue path;
        it->GetPath(path);
        for (const char* row : {"value", "status", "type", "has_children", "moniker"}) {
            Read(*it, row);
        }
        // What was deleted goes away when no call of ours is on the stack.
        if (one_of(100) == 0) {
            it.Reset();
            host.RunHostLoop();
            it = Model();
        }
    }
    std::printf("%d values stored, %d objects deleted\n", stored, deleted);
    EXPECT_LT(20, stored);
    EXPECT_LT(3, deleted);
}

}  // namespace
