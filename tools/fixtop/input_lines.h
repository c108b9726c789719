// SPDX-License-Identifier: Apache-2.0
#pragma once

// The lines of standard input.

#include <functional>
#include <string>

#include "output.h"

namespace fixtop {

// Without their line ends. False, which is noted, when they can't be read; throws Interrupted.
bool ForEachInputLine(const std::function<void(const std::string& line)>& visit, Output& out);

}  // namespace fixtop
