// SPDX-License-Identifier: Apache-2.0
#pragma once

// Between the texts of the system, UTF-16, and ours, UTF-8.

#include <string>
#include <string_view>

namespace fixtop::hovex {

std::wstring Wide(std::string_view text);
std::string Utf8(std::wstring_view text);
// As scripts compare names: letters of ASCII are the same in both cases.
bool SameName(std::string_view a, std::string_view b);

}  // namespace fixtop::hovex
