// SPDX-License-Identifier: Apache-2.0
#include "platform/file_search.h"

#include <algorithm>
#include <array>

#include "platform/names.h"

namespace fixtop {

namespace {

constexpr std::array<std::string_view, 6> kDevices = {"con", "prn",    "aux",
                                                      "nul", "conin$", "conout$"};
constexpr std::array<std::string_view, 2> kNumberedDevices = {"com", "lpt"};
// Superscripts count as digits.
constexpr std::array<std::string_view, 13> kDeviceNumbers = {
    "0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "\u00b9", "\u00b2", "\u00b3"};

// Extensions and blanks behind the name make no difference.
bool IsDevice(std::string_view part) {
    std::string_view name = part.substr(0, part.find('.'));
    name = name.substr(0, name.find_last_not_of(' ') + 1);
    const auto is_name = [&](std::string_view device) { return SameName(device, name); };
    if (std::any_of(kDevices.begin(), kDevices.end(), is_name)) return true;
    constexpr std::size_t kWord = 3;
    const auto begins = [&](std::string_view device) {
        return SameName(device, name.substr(0, kWord));
    };
    return std::any_of(kNumberedDevices.begin(), kNumberedDevices.end(), begins) &&
           std::find(kDeviceNumbers.begin(), kDeviceNumbers.end(), name.substr(kWord)) !=
               kDeviceNumbers.end();
}

// Windows leaves dots and blanks at the end of a name out, so more than one part can mean "..".
bool IsPlainPart(std::string_view part) {
    const bool climbs = part.size() > 1 && part.find_first_not_of(". ") == std::string_view::npos;
    return !climbs && !IsDevice(part);
}

}  // namespace

bool StaysInSearchFolders(std::string_view name) {
    constexpr std::string_view kSeparators = "/\\";
    if (name.empty() || name.find(':') != std::string_view::npos) return false;
    if (kSeparators.find(name.front()) != std::string_view::npos) return false;
    for (std::size_t begin = 0; begin <= name.size();) {
        const std::size_t end = std::min(name.find_first_of(kSeparators, begin), name.size());
        if (!IsPlainPart(name.substr(begin, end - begin))) return false;
        begin = end + 1;
    }
    return true;
}

}  // namespace fixtop
