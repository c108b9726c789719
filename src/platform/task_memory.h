// SPDX-License-Identifier: Apache-2.0
#pragma once

// Memory that one side allocates and a client of another module frees: texts handed out by
// automation objects. Any null pointer may be freed.

#include <cstddef>
#include <string_view>

namespace fixtop {

// Null when memory is exhausted.
void* AllocateTaskMemory(std::size_t size) noexcept;
void FreeTaskMemory(void* memory) noexcept;

// A NUL-terminated copy, which the caller frees with FreeTaskMemory.
char* CopyToTaskMemory(std::string_view text) noexcept;

}  // namespace fixtop
