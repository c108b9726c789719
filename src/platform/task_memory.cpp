// SPDX-License-Identifier: Apache-2.0
#include "platform/task_memory.h"

#include <cstring>

namespace fixtop {

char* CopyToTaskMemory(std::string_view text) noexcept {
    char* copy = static_cast<char*>(AllocateTaskMemory(text.size() + 1));
    if (copy == nullptr) return nullptr;
    if (!text.empty()) std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return copy;
}

}  // namespace fixtop
