// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace fixtop::text_forms {

// The leading number of a NUL-terminated text as the C scanner's "%d" and "%lg" read it, 0 when
// there is none. ScanInt keeps the low 32 bits of a number out of range.
std::int32_t ScanInt(const char* text) noexcept;
double ScanReal(const char* text) noexcept;

}  // namespace fixtop::text_forms
