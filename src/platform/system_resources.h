// SPDX-License-Identifier: Apache-2.0
#pragma once

// The resources that the system's linker put into the module, behind platform/resources.h.

#include <string>
#include <string_view>

namespace fixtop {

std::string_view FindSystemResource(const std::string& name);

}  // namespace fixtop
