// SPDX-License-Identifier: Apache-2.0
#include "platform/clipboard.h"

namespace fixtop {

bool ClipboardFormat::IsThere() noexcept {
    return false;
}

std::optional<std::string> ClipboardFormat::Read() {
    return std::nullopt;
}

}  // namespace fixtop
