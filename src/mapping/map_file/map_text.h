// SPDX-License-Identifier: Apache-2.0
#pragma once

// The texts of map files: what of the white space around them counts.

#include <string>
#include <string_view>

#include "path/path_step.h"

namespace fixtop {

// Whether there is nothing but newlines, blanks and tabs.
bool IsBlank(std::string_view text);
// Without leading newlines, blanks and tabs, and without trailing newlines and blanks. A trailing
// tab goes only when the text also starts with one: maps rely on the tab that stays.
std::string TrimmedText(std::string_view text);
// Without any newline, blank or tab.
std::string PackedText(std::string_view text);
// Null when the text does not parse; why is logged.
ParsedPath CompilePath(const std::string& text);

}  // namespace fixtop
