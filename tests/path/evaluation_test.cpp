#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "path/tokenizer.h"
#include "support/scripted_tree.h"

namespace {

std::string PathOf(FIIterator& it) {
    FIValue path;
    it.GetPath(path);
    return path.ToText();
}

// Root: three streams, a unit with vessels, a node without children.
class PathEvaluation : public ::testing::Test {
protected:
    PathEvaluation() {
        for (int i = 0; i < 3; ++i) {
            ScriptNode& stream = root_.Add("Feed");
            stream.Set("type", "Stream").Set("rank", i).Set("temperature", 20.0 + i);
            stream.Add("Flow").Set("value", 1.0 * i).Set("uom", "kg/h");
            stream.Add("State").Set("value", i == 1 ? "gas" : "liquid");
        }
        ScriptNode& column = root_.Add("Column");
        column.Set("type", "Column");
        ScriptNode& vessels = column.Add("Vessels");
        for (const char* name : {"Condenser", "Main", "Reboiler"}) {
            ScriptNode& vessel = vessels.Add(std::string("Elem") + name[0]);
            vessel.Add("Object Name").Set("value", name);
            vessel.Add("Vessel Pressure").Set("value", 101.5);
        }
        root_.Add("Leaf").Set("text", "1.0").Set("nothing", FIValue());
        it_ = root_.Iterate();
    }

    ScriptNode root_{"Root"};
    Ref<FIIterator> it_;
};

struct WalkCase {
    const char* path;
    // Path after the walk; null when it fails and stays.
    const char* reached;
    // The rank of the node reached, -1 when it has none.
    int rank = -1;
};

TEST_F(PathEvaluation, walks_reach_the_node_that_the_path_names) {
    const WalkCase cases[] = {
        {"", "Root"},
        {"Column", "Root.Column"},
        {"Column.Vessels", "Root.Column.Vessels"},
        {"Feed", "Root.Feed", 0},
        {"*", "Root.Feed", 0},
        {"Feed#0", "Root.Feed", 0},
        {"Feed#1", "Root.Feed", 1},
        {"Feed#2", "Root.Feed", 2},
        {"Feed#3", nullptr},
        {"#3", "Root.Column"},
        {"*#4", "Root.Leaf"},
        {"#5", nullptr},
        {"Nobody", nullptr},
        {"Column.Nobody", nullptr},
        {"Column.Vessels.Nobody", nullptr},
        {"Leaf.*", nullptr},
        {"Leaf.#0", nullptr},
        {"feed", nullptr},
        {"\"Column\".\"Vessels\"", "Root.Column.Vessels"},
        {"Column.Vessels.*[\"Object Name\"=\"Main\"].\"Vessel Pressure\"",
         "Root.Column.Vessels.ElemM.Vessel Pressure"},
        {"Column.Vessels.*[\"Object Name\"=Reboiler]", "Root.Column.Vessels.ElemR"},
        {"Column.Vessels.*[\"Object Name\"=main]", nullptr},
        {"*[(type)=Column]", "Root.Column"},
        {"*[(type)=\"X\"]", nullptr},
        {"*[(type)]", "Root.Feed", 0},
        {"*[(nothing)]", nullptr},
        {"*[Vessels]", "Root.Column"},
        {"*[(rank)=\"1.0\"]", "Root.Feed", 1},
        {"*[(rank)=2]", "Root.Feed", 2},
        {"*[(text)=1]", nullptr},
        {"*[(text)=\"1.0\"]", "Root.Leaf"},
        {"*[[(type)=Stream][State=gas]]", "Root.Feed", 1},
        {"*[(type)=Stream]#1", "Root.Feed", 0},
        {"*#1[(type)=Stream]", "Root.Feed", 1},
        {"*#1[State=liquid]", "Root.Feed", 2},
        {"*[(type)=Stream]![State=liquid]", "Root.Feed", 1},
        {"*[State=gas]|[Vessels]", "Root.Feed", 1},
        {"[Column]", "Root"},
        {"[Column.Vessels]", "Root"},
        {"[Nobody]", nullptr},
        {"[Nobody]|[Column].Column", "Root.Column"},
        {"Column[Nobody]", nullptr},
        {"a[b", nullptr},
        {"Feed(type)", "Root.Feed", 0},
    };
    for (const WalkCase& each : cases) {
        SCOPED_TRACE(each.path);
        Ref<FIIterator> it = root_.Iterate();
        EXPECT_EQ(each.reached != nullptr, it->SeekPath(Text(each.path)));
        EXPECT_EQ(each.reached ? each.reached : "Root", PathOf(*it));
        if (each.rank < 0) continue;
        FIValue rank;
        it->GetAttribute(Text("rank"), rank);
        EXPECT_EQ(each.rank, rank.AsInt());
    }
}

}  // namespace
