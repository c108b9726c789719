// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "framework/reference/reference.h"

namespace fixtop {

// Why a path leads to no node: how far it goes from here, and which names are near to the one that
// is missing there. `from` stays.
std::string WhyPathFails(const std::string& text, FIReference& from);

}  // namespace fixtop
