// SPDX-License-Identifier: Apache-2.0
#pragma once

// The ids of what a type library holds. They come from the names alone, so that each build and each
// machine has the same: the version 5 of RFC 4122 (SHA-1) of the text "<name> <major>.<minor>" in
// the namespace kTypeNamespace, as Python's uuid.uuid5 makes it:
//
//     uuid5(UUID("6f0b1c60-3a47-4d0e-9b21-5c7e1064d802"), "IQSIMaterialStream 13.2")

#include <string_view>

#include "fixtop/automation/unknown.h"

namespace fixtop {

inline constexpr InterfaceId kTypeNamespace = {
    0x6f0b1c60, 0x3a47, 0x4d0e, {0x9b, 0x21, 0x5c, 0x7e, 0x10, 0x64, 0xd8, 0x02}};

// Of an interface, or of the library itself.
InterfaceId IdOfType(std::string_view name, int major, int minor);

}  // namespace fixtop
