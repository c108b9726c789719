// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <windows.h>
// The component services follow the base header.
#include <unknwn.h>

namespace fixtop::hovex {

// By it the system and the registry know Fixtop.Case.
inline constexpr GUID kCaseClass = {
    0xf71f829b, 0x371f, 0x4057, {0xb2, 0xba, 0x9e, 0x00, 0xf0, 0x19, 0x26, 0x46}};

// Makes cases for the system. One for the whole process, which it does not keep running.
IClassFactory& CaseFactory();

}  // namespace fixtop::hovex
