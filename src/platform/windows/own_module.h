// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <windows.h>

namespace fixtop {

// The module that this code is linked into: the library, or a program that links it statically.
HMODULE OwnModule();

}  // namespace fixtop
