// SPDX-License-Identifier: Apache-2.0
#pragma once

// A folder to save cases in.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "case_builder.h"
#include "casehost/case_file.h"
#include "support/temporary_folder.h"

namespace fixtop::casehost::test {

inline constexpr char kOld[] = "the old file\n";

class Saving : public ::testing::Test {
 protected:
    void SetUp() override { RegisterCaseFiles(); }

    // The names in the folder, in order.
    std::vector<std::string> Found() {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    TemporaryFolder folder_;
};

using Names = std::vector<std::string>;

}  // namespace fixtop::casehost::test
