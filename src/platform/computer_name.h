// SPDX-License-Identifier: Apache-2.0
#pragma once

// The name of this computer, cut to the 15 characters that a network name may have; empty when the
// system does not tell.

#include <cstddef>
#include <string>

namespace fixtop {

inline constexpr std::size_t kComputerNameLimit = 15;

std::string ComputerName();

}  // namespace fixtop
