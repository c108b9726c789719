#pragma once

// The name of this computer, cut to the 15 characters that a network name may have; empty when the
// system does not tell.

#include <cstddef>
#include <string>

inline constexpr std::size_t kComputerNameLimit = 15;

std::string ComputerName();
