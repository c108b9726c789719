// SPDX-License-Identifier: Apache-2.0
#pragma once

// A message text from a printf format and its arguments, of any length.

#include <string>

namespace fixtop {

std::string MessageText(const char* format, ...);

}  // namespace fixtop
