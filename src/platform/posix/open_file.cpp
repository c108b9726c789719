// SPDX-License-Identifier: Apache-2.0
#include "platform/open_file.h"

#include "platform/no_memory.h"

namespace fixtop {

FilePtr OpenFile(const std::string& utf8_name, const char* mode) {
    return OrNoMemory([&] { return FilePtr(std::fopen(utf8_name.c_str(), mode)); });
}

const char* NullDevice() {
    return "/dev/null";
}

}  // namespace fixtop
