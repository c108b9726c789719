// SPDX-License-Identifier: Apache-2.0
#pragma once

// Map files: they bind classes and attributes of a class library to the application's tree.

#include <string>

namespace fixtop {

class CCDMClassLibrary;

// Reads a map into the library, whose classes must have been read; each file once. False when the
// file can't be found or parsed; why is logged. Mistakes inside a file are logged and passed over.
bool ReadMapFile(CCDMClassLibrary& library, const std::string& file);

}  // namespace fixtop
