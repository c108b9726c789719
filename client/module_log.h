// SPDX-License-Identifier: Apache-2.0
#pragma once

// ModuleLog: leads the module's log where it is wanted for as long as it lives, and listens. One
// within another has the log alone; the outer one goes on afterwards.

#include <string>
#include <utility>
#include <vector>

#include "fixtop/fixtop.h"

namespace fixtop::client {

class ModuleLog {
 public:
    // Into no file by an empty name.
    explicit ModuleLog(std::string file)
        : file_(std::move(file)), outer_(std::exchange(innermost_, this)) {
        Listen();
    }
    ~ModuleLog() {
        innermost_ = outer_;
        outer_ ? outer_->Listen() : FixtopSetLog(nullptr, nullptr, nullptr);
    }
    ModuleLog(const ModuleLog&) = delete;
    ModuleLog& operator=(const ModuleLog&) = delete;

    const std::vector<std::string>& Lines() const { return lines_; }

 private:
    void Listen() {
        FixtopSetLog(
            file_.c_str(),
            [](void* lines, const char* text) {
                std::string line = text;
                while (line.ends_with('\n')) line.pop_back();
                static_cast<std::vector<std::string>*>(lines)->push_back(std::move(line));
            },
            &lines_);
    }

    static inline ModuleLog* innermost_ = nullptr;

    const std::string file_;
    ModuleLog* const outer_;
    std::vector<std::string> lines_;
};

}  // namespace fixtop::client
