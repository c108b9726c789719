// SPDX-License-Identifier: Apache-2.0
#pragma once

// A case of the in-memory host below the adapter.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "casehost/standard_host.h"
#include "framework/iterator/iterator.h"
#include "host/adapter.h"
#include "host/levels/case_top.h"
#include "host/levels/model_nodes.h"
#include "live/case.h"
#include "support/host_reading.h"
#include "support/host_script.h"

namespace fixtop {

using NodeRef = Ref<FIIteratorBase>;

class LiveCase : public testing::Test {
 protected:
    ~LiveCase() override { TheAdapter().Install(nullptr); }

    void Open(const std::string& name) {
        casehost::UseStandardParts(host);
        script = HostScript::Over(host);
        const casehost::OpenResult result = casehost::OpenCase(host, name);
        ASSERT_TRUE(result) << name;
        TheAdapter().Install(&host.Services());
    }
    NodeRef Top() {
        auto models = Ref<HAandCContext>::Share(new HAandCContext(host.ActiveCase(), {}));
        auto top =
            Ref<FIEntry>::Share(new FIXTopEntry(models.Get(), host.ActiveCase(), nullptr, nullptr));
        return NodeRef::Adopt(new FIIterator(top.Get(), false));
    }
    // With `history` the iterator goes round in circles when it is led to.
    NodeRef Model(bool history = false) {
        auto models = Ref<HAandCContext>::Share(new HAandCContext(host.ActiveCase(), {}));
        return NodeRef::Adopt(new FIIterator(Child(*models, "appModel").Get(), history));
    }
    host::FlowSheet& Main() { return *host.ActiveCase()->MainFlowSheet(); }
    NodeRef At(const std::string& path) {
        NodeRef node = Model();
        EXPECT_TRUE(node->SeekPath(FIValue(path.c_str()))) << path;
        return node;
    }
    // What the module says against it.
    static std::string StoreAttribute(FIIteratorBase& node, const char* name, const FIValue& value,
                                      int mode = 0) {
        FIValue out("left over");
        node.SetAttribute(FIValue(name), value, mode, out);
        return Shown(out);
    }
    static std::string Store(FIIteratorBase& node, const FIValue& value, int mode = 0) {
        return StoreAttribute(node, "value", value, mode);
    }
    static double Number(FIIteratorBase& node) {
        FIValue value;
        node.GetAttribute(FIValue("value"), value);
        return value.AsDouble();
    }
    static std::string NameAt(FIIteratorBase& node) {
        FIValue name;
        node.GetName(name);
        return Shown(name);
    }

    casehost::CaseHost host{false};
    std::shared_ptr<HostScript> script;
};

inline std::filesystem::path RecordedCases() {
    const char* given = std::getenv("FIXTOP_CASES");
    return std::filesystem::path(given ? given : FIXTOP_CASES) / "real";
}

}  // namespace fixtop
