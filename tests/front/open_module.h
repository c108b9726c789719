// SPDX-License-Identifier: Apache-2.0
#pragma once

// The module on a case of the in-memory host.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "casehost/standard_host.h"
#include "fixtop/fixtop.h"

namespace fixtop {

using Names = std::vector<std::string>;

class HostedModule : public testing::Test {
 protected:
    void SetUp() override { FixtopInstallHost(&host_.Services()); }
    void TearDown() override {
        UnsetTopNotify(nullptr);
        top_.Reset();
        FixtopInstallHost(nullptr);
    }
    // Opens the top on the case of `host_`.
    void OpenTop() {
        top_ = Ref<FIEntry>::Adopt(GetCombinedEntry(nullptr));
        ASSERT_TRUE(top_);
    }

    casehost::CaseHost host_;
    Ref<FIEntry> top_;
};

// The raw view: nodes are reached, read and written by their paths.
class OpenModule : public HostedModule {
 protected:
    // Null when the path, below `root_`, leads nowhere.
    Ref<FIIteratorBase> At(const std::string& path) {
        auto it = Ref<FIIteratorBase>::Adopt(FixtopMakeIterator(top_.Get(), false));
        const std::string full = root_.empty() || path.empty() ? root_ + path : root_ + "." + path;
        return it->SeekPath(FIValue(full.c_str())) ? it : Ref<FIIteratorBase>();
    }
    std::string Read(const std::string& path, const char* name = "value") {
        Ref<FIIteratorBase> it = At(path);
        if (!it) return "(no node)";
        FIValue value;
        it->GetAttribute(FIValue(name), value);
        return value.IsNull() ? "(NULL)" : value.ToText();
    }
    std::string Write(const std::string& path, const FIValue& value, int mode = 0) {
        Ref<FIIteratorBase> it = At(path);
        if (!it) return "(no node)";
        FIValue out;
        it->SetAttribute(FIValue("value"), value, mode, out);
        return out.IsNull() ? "(NULL)" : out.ToText();
    }
    Names Children(const std::string& path) {
        Names names;
        Ref<FIIteratorBase> it = At(path);
        for (bool on = it && it->DownFirst(); on; on = it->Next()) {
            FIValue name;
            it->GetName(name);
            names.push_back(name.ToText());
        }
        return names;
    }

    std::string root_;
};

// The neutral view, with the files that the module ships.
class NeutralModule : public HostedModule {
 protected:
    // Of a file, or of the built-in case by its name.
    void OpenNeutral(const std::string& path_or_name) {
        casehost::UseStandardParts(host_);
        ASSERT_TRUE(casehost::OpenCase(host_, path_or_name)) << path_or_name;
        OpenTop();
        root_ = Ref<FIEntry>::Adopt(FixtopOpenModel(top_.Get(), nullptr));
        ASSERT_TRUE(root_);
    }
    void TearDown() override {
        root_.Reset();
        HostedModule::TearDown();
    }
    // The attribute "Name" of each element of a list of the flowsheet.
    Names NamesIn(const std::string& list) {
        Names names;
        auto it = Ref<FIIteratorBase>::Adopt(FixtopMakeIterator(root_.Get(), false));
        FIValue name;
        for (bool on = it->SeekPath(FIValue("Flowsheet")) && it->DownFirst(); on; on = it->Next()) {
            it->GetName(name);
            if (name.ToText() != list) continue;
            const auto below = Ref<FIIteratorBase>::Adopt(it->Copy());
            EXPECT_TRUE(below->SeekPath(FIValue("Name")));
            below->GetAttribute(FIValue("value"), name);
            names.push_back(name.ToText());
        }
        return names;
    }

    Ref<FIEntry> root_;
};

}  // namespace fixtop
