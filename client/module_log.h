// SPDX-License-Identifier: Apache-2.0
#pragma once

// ModuleLog: leads the module's log where it is wanted for as long as it lives, and listens.

#include <string>
#include <vector>

#include "fixtop/fixtop.h"

namespace fixtop::client {

class ModuleLog {
 public:
    // Into no file by an empty name.
    explicit ModuleLog(const std::string& file) {
        FixtopSetLog(
            file.c_str(),
            [](void* lines, const char* text) {
                std::string line = text;
                while (line.ends_with('\n')) line.pop_back();
                static_cast<std::vector<std::string>*>(lines)->push_back(std::move(line));
            },
            &lines_);
    }
    ~ModuleLog() { FixtopSetLog(nullptr, nullptr, nullptr); }
    ModuleLog(const ModuleLog&) = delete;
    ModuleLog& operator=(const ModuleLog&) = delete;

    const std::vector<std::string>& Lines() const { return lines_; }

 private:
    std::vector<std::string> lines_;
};

}  // namespace fixtop::client
