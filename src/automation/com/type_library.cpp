// SPDX-License-Identifier: Apache-2.0
#include "automation/com/type_library.h"

namespace fixtop {

std::string TypeLibraryFile(const char* name, int major, int minor) {
    const std::string prefix = name && *name ? name : "qsiccdm";
    return prefix + '_' + std::to_string(major) + '_' + std::to_string(minor) + ".tlb";
}

}  // namespace fixtop
