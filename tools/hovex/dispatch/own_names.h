// SPDX-License-Identifier: Apache-2.0
#pragma once

// The ids of members that objects have by themselves, one a name in the whole process: what a
// script keeps of one object fits the next.

#include <windows.h>
// The component services follow the base header.
#include <oaidl.h>

#include <string>

namespace fixtop::hovex {

DISPID IdOfOwnName(const std::string& name);
// Null for an id of no such name. Lent for good.
const std::string* OwnNameOf(DISPID id);

}  // namespace fixtop::hovex
