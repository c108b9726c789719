// SPDX-License-Identifier: Apache-2.0
#pragma once

// Names of files are UTF-8 on every platform. A stream or a path that is made of a plain string
// takes it in another encoding on Windows, so files are opened by what this makes of their names.

#include <filesystem>
#include <string>

namespace fixtop::casehost {

inline std::filesystem::path FilePath(const std::string& name) {
    return std::u8string(name.begin(), name.end());
}

}  // namespace fixtop::casehost
