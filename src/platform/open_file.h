// SPDX-License-Identifier: Apache-2.0
#pragma once

// Files by names that are UTF-8 on every system.

#include <cstdio>
#include <memory>
#include <string>

namespace fixtop {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

// `mode` as for std::fopen. Null when the file cannot be opened, or the name is no UTF-8 where the
// system has to know.
FilePtr OpenFile(const std::string& utf8_name, const char* mode);

// The name of the file that takes all and keeps nothing.
const char* NullDevice();

}  // namespace fixtop
