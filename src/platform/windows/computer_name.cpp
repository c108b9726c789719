// SPDX-License-Identifier: Apache-2.0
#include "platform/computer_name.h"

#include <windows.h>

namespace fixtop {

std::string ComputerName() {
    char name[256] = "";
    DWORD size = sizeof name;
    if (!GetComputerNameA(name, &size)) return {};
    return std::string(name).substr(0, kComputerNameLimit);
}

}  // namespace fixtop
