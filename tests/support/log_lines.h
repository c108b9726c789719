// SPDX-License-Identifier: Apache-2.0
#pragma once

// The module's log in a file of the working directory, begun anew with every level shown, and its
// lines without the header.

#include <sstream>
#include <string>
#include <vector>

#include "diagnostics/error_log.h"
#include "diagnostics/module_log.h"
#include "support/temporary_folder.h"

namespace fixtop {

class LogLines {
 public:
    explicit LogLines(const TemporaryFolder& folder, int level = 9) : folder_(folder) {
        OpenErrorLog(File().c_str());
        SetLogLevel(level);
    }
    ~LogLines() { SetLogLevel(ErrorLog::kDefaultLevel); }
    LogLines(const LogLines&) = delete;
    LogLines& operator=(const LogLines&) = delete;

    // Each line without the blank that leads it. "Using local" lines tell where a file was found
    // and are left out here.
    std::vector<std::string> Lines(bool with_using_local = false) const {
        std::istringstream text(folder_.Read(kFile));
        std::vector<std::string> lines;
        std::string line;
        std::getline(text, line);
        std::getline(text, line);
        while (std::getline(text, line)) {
            const bool local = line.find("  Using local ") == 1;
            if (with_using_local || !local) lines.push_back(line.substr(1));
        }
        return lines;
    }
    void Restart() const {
        const int level = SetLogLevel(0);
        OpenErrorLog(File().c_str());
        SetLogLevel(level);
    }

 private:
    static constexpr const char* kFile = "lines.log";
    // By its whole name: what is logged later goes nowhere, and not into the folder of then.
    std::string File() const { return folder_.File(kFile); }

    const TemporaryFolder& folder_;
};

}  // namespace fixtop
