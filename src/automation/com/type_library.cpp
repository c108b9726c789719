// SPDX-License-Identifier: Apache-2.0
#include "automation/com/type_library.h"

#include <cstdint>
#include <limits>

namespace fixtop {

namespace {

// The system's loader has room for so many characters.
constexpr std::size_t kLongestFile = 240;
constexpr int kGreatestVersion = std::numeric_limits<std::uint16_t>::max();

bool IsVersion(int number) {
    return number >= 0 && number <= kGreatestVersion;
}

}  // namespace

std::string TypeLibraryFile(const char* name, int major, int minor) {
    if (!IsVersion(major) || !IsVersion(minor)) return "";
    std::string file = name && *name ? name : "qsiccdm";
    file += '_' + std::to_string(major) + '_' + std::to_string(minor) + ".tlb";
    return file.size() <= kLongestFile ? file : "";
}

}  // namespace fixtop
