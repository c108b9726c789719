// SPDX-License-Identifier: Apache-2.0
#include "platform/open_file.h"

#include "platform/windows/wide_text.h"

namespace fixtop {

FilePtr OpenFile(const std::string& utf8_name, const char* mode) {
    const auto name = Widen(utf8_name);
    const auto wide_mode = Widen(mode);
    return FilePtr(name && wide_mode ? _wfopen(name->c_str(), wide_mode->c_str()) : nullptr);
}

const char* NullDevice() {
    return "NUL";
}

}  // namespace fixtop
