// SPDX-License-Identifier: Apache-2.0
#pragma once

// Text of the system, UTF-16, and of the module, UTF-8.

#include <optional>
#include <string>
#include <string_view>

namespace fixtop {

// Nothing for bytes that are no UTF-8.
std::optional<std::wstring> Widen(std::string_view utf8);
std::string Narrow(std::wstring_view wide);

}  // namespace fixtop
