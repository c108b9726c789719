#pragma once

// The module on a case of the in-memory host: nodes are reached, read and written by their paths.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "casehost/case_host.h"
#include "front/fixtop.h"

using Names = std::vector<std::string>;

class OpenModule : public testing::Test {
 protected:
    // Opens the top on the case of `host_`.
    void OpenTop() {
        top_ = Ref<FIEntry>::Adopt(GetCombinedEntry(nullptr));
        ASSERT_TRUE(top_);
    }
    void SetUp() override { FixtopInstallHost(&host_.Services()); }
    void TearDown() override {
        UnsetTopNotify(nullptr);
        top_.Reset();
        FixtopInstallHost(nullptr);
    }

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

    casehost::CaseHost host_;
    Ref<FIEntry> top_;
    std::string root_;
};
