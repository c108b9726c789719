// SPDX-License-Identifier: Apache-2.0
#pragma once

// Collections of an open case, in both views, through the exports of the module.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "front/open_module.h"
#include "live/case.h"

namespace fixtop {

using Collected = Ref<FICollectionBase>;
using Walk = Ref<FICollectionIteratorBase>;
using NodeRef = Ref<FIIteratorBase>;

inline std::string Shown(const FIValue& value) {
    return value.IsNull() ? "(NULL)" : value.ToText();
}

inline Collected MakeCollection() {
    return Collected::Adopt(FixtopMakeCollection());
}

inline std::string XmlOf(FICollectionBase& items) {
    FIValue text;
    items.ToXml(text);
    return text.ToText();
}

inline Names ValuesOf(FICollectionBase& items, const char* attribute = "value") {
    std::vector<FIValue> values(items.Count());
    items.GetValues(FIValue(attribute), values.data());
    Names shown;
    for (const FIValue& each : values) shown.push_back(Shown(each));
    return shown;
}

inline Names PathsOf(FICollectionBase& items) {
    Names paths;
    FIValue path;
    const auto it = Walk::Adopt(items.MakeIterator());
    while (it->Next()) {
        it->GetPath(path);
        paths.push_back(Shown(path));
    }
    return paths;
}

class SelectedCase : public NeutralModule {
 protected:
    // At the root of the raw and of the neutral view.
    NodeRef Raw() const { return NodeRef::Adopt(FixtopMakeIterator(top_.Get(), false)); }
    NodeRef Neutral() const { return NodeRef::Adopt(FixtopMakeIterator(root_.Get(), false)); }
    NodeRef At(NodeRef root, const std::string& path) const {
        EXPECT_TRUE(root->SeekPath(FIValue(path.c_str()))) << path;
        return root;
    }
    casehost::Case& Open() const { return *host_.ActiveLiveCase(); }
    host::Viewable* Stream(const std::string& name) const {
        host::FlowSheetObjectIterator it = Open().MainFlowSheet()->Objects();
        host::Viewable* each = it.Reset();
        while (each && each->GetName().Str() != name) each = it.Next();
        return each;
    }
};

inline constexpr char kStreams[] = "appModel.FlowSheetObjects.Streams";

}  // namespace fixtop
