// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

namespace fixtop::hovex {

// The text of a selection that another program has put on the clipboard; nothing when there is
// none.
std::optional<std::string> SelectionOnClipboard();

}  // namespace fixtop::hovex
