// SPDX-License-Identifier: Apache-2.0
// Moves among siblings, over every node of a case in both views.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>

#include "open_module.h"

namespace fixtop {

namespace {

using Iterator = Ref<FIIteratorBase>;
namespace fs = std::filesystem;

std::string NameOf(FIIteratorBase& it) {
    FIValue name;
    it.GetName(name);
    return name.IsNull() ? "(NULL)" : name.ToText();
}

class Nodes : public NeutralModule {
 protected:
    // Compares at the node and at all below it.
    void CompareBelow(FIIteratorBase& node) {
        if (node.Depth() >= depth_) return;
        const Iterator walker = Iterator::Adopt(node.Copy());
        const Iterator at_last = Iterator::Adopt(node.Copy());
        const bool has_children = walker->DownFirst();
        ASSERT_EQ(has_children, at_last->DownLast()) << PathOf(node);
        if (!has_children) return;
        ++parents_;
        Iterator on_last;
        do {
            on_last = Iterator::Adopt(walker->Copy());
            CompareBelow(*on_last);
        } while (walker->Next());
        ExpectSame(*on_last, *at_last);
        // From any of the siblings the last is the same.
        const Iterator sibling = Iterator::Adopt(node.Copy());
        sibling->DownFirst();
        EXPECT_TRUE(sibling->Last()) << PathOf(node);
        ExpectSame(*on_last, *sibling);
        EXPECT_TRUE(at_last->Last()) << PathOf(node);
        ExpectSame(*on_last, *at_last);
        EXPECT_FALSE(at_last->Next()) << PathOf(node);
        ExpectNowhereOrOnFirst(*at_last);
    }
    static void ExpectNowhereOrOnFirst(FIIteratorBase& behind_last) {
        if (NameOf(behind_last) == "(NULL)") return;
        const Iterator first = Iterator::Adopt(behind_last.Copy());
        EXPECT_TRUE(first->First());
        ExpectSame(*first, behind_last);
    }
    using Visit = std::function<void(FIIteratorBase&)>;
    // Down to the depth at which the lists of one object have their elements.
    static void ForEachNode(FIIteratorBase& node, const Visit& visit) {
        constexpr int kDepth = 4;
        visit(node);
        if (node.Depth() >= kDepth) return;
        const Iterator child = Iterator::Adopt(node.Copy());
        for (bool on = child->DownFirst(); on; on = child->Next()) ForEachNode(*child, visit);
    }
    static void ExpectSame(FIIteratorBase& expected, FIIteratorBase& found) {
        EXPECT_EQ(NameOf(expected), NameOf(found)) << PathOf(expected);
        EXPECT_EQ(0, expected.Compare(found)) << PathOf(expected);
        EXPECT_EQ(expected.AtFirst(), found.AtFirst()) << PathOf(expected);
        EXPECT_EQ(expected.AtLast(), found.AtLast()) << PathOf(expected);
    }
    static std::string PathOf(FIIteratorBase& it) {
        FIValue path;
        it.GetPath(path);
        return path.ToText();
    }
    int CountParents(const Ref<FIEntry>& root) {
        parents_ = 0;
        CompareBelow(*Iterator::Adopt(FixtopMakeIterator(root.Get(), false)));
        return parents_;
    }

    int depth_ = 1000;
    int parents_ = 0;
};

TEST_F(Nodes, of_the_class_library_end_where_down_last_goes) {
    const auto classes = Ref<FIEntry>::Adopt(FixtopOpenDictionary(nullptr));
    ASSERT_TRUE(classes);
    EXPECT_LT(50, CountParents(classes));
}

class NodesOf : public Nodes, public testing::WithParamInterface<const char*> {
 protected:
    void SetUp() override {
        NeutralModule::SetUp();
        std::string name = GetParam();
        if (name != "demo") {
            const char* given = std::getenv("FIXTOP_CASES");
            const fs::path folder = fs::path(given ? given : FIXTOP_CASES) / "real";
            name = (folder / name).concat(".dwxmz").string();
            if (!fs::exists(name)) GTEST_SKIP() << "no sample case " << name;
        }
        OpenNeutral(name);
    }
};

TEST_P(NodesOf, the_raw_view_end_where_down_last_goes) {
    // Streams and unit operations lead to each other.
    depth_ = 8;
    EXPECT_LT(100, CountParents(top_));
}

TEST_P(NodesOf, the_neutral_view_end_where_down_last_goes) {
    EXPECT_LT(100, CountParents(root_));
}

// Not always to the same node: several may have one name and key.
TEST_P(NodesOf, the_neutral_view_have_paths_that_read_back) {
    int nodes = 0;
    ForEachNode(*Iterator::Adopt(FixtopMakeIterator(root_.Get(), false)), [&](FIIteratorBase& it) {
        const std::string path = PathOf(it);
        const std::size_t dot = path.find('.');
        if (dot == std::string::npos) return;
        ++nodes;
        const Iterator back = Iterator::Adopt(FixtopMakeIterator(root_.Get(), false));
        ASSERT_TRUE(back->SeekPath(FIValue(path.c_str() + dot + 1))) << path;
        EXPECT_EQ(path, PathOf(*back));
    });
    EXPECT_LT(300, nodes);
}

INSTANTIATE_TEST_SUITE_P(Cases, NodesOf, testing::Values("demo", "benzene-toluene-distillation"));

// Every node of the basis, twice: for each the host fills the specification anew.
class BasisNodes : public OpenModule {
 protected:
    BasisNodes() { root_ = "appModel.Basis"; }
    void SetUp() override {
        OpenModule::SetUp();
        casehost::UseStandardParts(host_);
        ASSERT_TRUE(casehost::OpenCase(host_, "demo"));
        OpenTop();
        places_.push_back({});
        Collect(*At(""), {});
    }
    void Collect(FIIteratorBase& node, const std::vector<int>& place) {
        const Iterator child = Iterator::Adopt(node.Copy());
        int index = 0;
        for (bool on = child->DownFirst(); on; on = child->Next()) {
            std::vector<int> below = place;
            below.push_back(index++);
            places_.push_back(below);
            Collect(*child, below);
        }
    }
    Iterator AtPlace(const std::vector<int>& place) {
        Iterator it = At("");
        for (const int index : place) EXPECT_TRUE(it->Down(index));
        return it;
    }
    std::vector<Iterator> AllNodes() {
        std::vector<Iterator> nodes;
        for (const auto& place : places_) nodes.push_back(AtPlace(place));
        return nodes;
    }

    // Indices of children, in the order of the tree.
    std::vector<std::vector<int>> places_;
};

TEST_F(BasisNodes, are_equal_when_they_are_one_node) {
    ASSERT_LT(100u, places_.size());
    for (const auto& place : places_) {
        const Iterator one = AtPlace(place);
        const Iterator other = AtPlace(place);
        EXPECT_EQ(0, one->Compare(*other)) << NameOf(*one);
        EXPECT_TRUE(one->Equal(*other)) << NameOf(*one);
    }
}

TEST_F(BasisNodes, differ_and_stand_in_the_order_of_the_tree) {
    const auto nodes = AllNodes();
    const auto others = AllNodes();
    const auto sign = [](int result) { return (result > 0) - (result < 0); };
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        for (std::size_t j = 0; j < nodes.size(); ++j) {
            const int result = nodes[i]->Compare(*others[j]);
            EXPECT_EQ((i > j) - (i < j), sign(result))
                << NameOf(*nodes[i]) << " and " << NameOf(*nodes[j]);
        }
    }
}

}  // namespace

}  // namespace fixtop
