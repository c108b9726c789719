// SPDX-License-Identifier: Apache-2.0
#include "platform/computer_name.h"

#include <unistd.h>

namespace fixtop {

std::string ComputerName() {
    char name[256] = "";
    if (gethostname(name, sizeof name - 1) != 0) return {};
    return std::string(name).substr(0, kComputerNameLimit);
}

}  // namespace fixtop
