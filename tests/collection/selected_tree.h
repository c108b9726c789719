// SPDX-License-Identifier: Apache-2.0
#pragma once

// A collection over a scripted tree.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "collection/collection.h"
#include "diagnostics/instance_counts.h"
#include "support/scripted_tree.h"

namespace fixtop {

using Collected = Ref<FICollectionBase>;
using Walk = Ref<FICollectionIteratorBase>;
using Words = std::vector<std::string>;

inline std::string Shown(const FIValue& value) {
    return value.IsNull() ? "(NULL)" : value.ToText();
}

// Top.Feed.{Temperature, Pressure, "Comp.Frac"}, Top.Product.{Temperature, Pressure, "Comp.Frac"}.
class SelectedTree : public ::testing::Test {
 protected:
    SelectedTree() {
        double number = 1;
        for (const char* stream : {"Feed", "Product"}) {
            ScriptNode& node = top_.Add(stream);
            for (const char* variable : {"Temperature", "Pressure", "Comp.Frac"}) {
                node.Add(variable).Set("value", number++);
            }
        }
    }

    Ref<FIIterator> At(const std::string& path) {
        auto it = top_.Iterate();
        EXPECT_TRUE(path.empty() || it->SeekPath(Text(path))) << path;
        return it;
    }
    FICollectionElement* Add(const std::string& path) { return items_->Add(*At(path)); }
    ScriptNode& Stream(int index) { return *top_.children[index]; }
    ScriptNode& Variable(int stream, int index) { return *Stream(stream).children[index]; }

    // The paths of the items in their order.
    static Words PathsOf(FICollectionBase& items) {
        Words paths;
        FIValue path;
        const auto it = Walk::Adopt(items.MakeIterator());
        while (it->Next()) {
            it->GetPath(path);
            paths.push_back(Shown(path));
        }
        return paths;
    }
    Words Paths() const { return PathsOf(*items_); }
    static Words ValuesOf(FICollectionBase& items, const char* attribute = "value") {
        std::vector<FIValue> values(items.Count());
        items.GetValues(Text(attribute), values.data());
        Words words;
        for (const FIValue& each : values) words.push_back(Shown(each));
        return words;
    }
    Words Values() const { return ValuesOf(*items_); }
    static std::string XmlOf(FICollectionBase& items) {
        FIValue text;
        items.ToXml(text);
        return text.ToText();
    }
    std::string Xml() const { return XmlOf(*items_); }
    // On the item of this place.
    Walk On(int index) const {
        auto it = Walk::Adopt(items_->MakeIterator());
        for (int i = 0; i <= index; ++i) EXPECT_TRUE(it->Next());
        return it;
    }

    ScriptNode top_{"Top"};
    const Collected items_ = Collection::Make();
};

inline std::string Backup(const std::string& body) {
    return "<?xml version=\"1.0\" ?>\n<CollectionBackup>\n" + body + "</CollectionBackup>\n";
}

}  // namespace fixtop
