// SPDX-License-Identifier: Apache-2.0
#pragma once

// The reader of class library files, root element QZClassLibrary. Elements and attributes that it
// does not know are left out without a word: they are for other consumers of the files.

#include <string>

#include "xml/xml_file.h"

namespace fixtop {

class CCDMClassLibrary;

// Reads one file, once for the library, and in its place whatever it includes.
bool ReadClassFileInto(CCDMClassLibrary& library, const std::string& file, ModelFileOrigin origin,
                       int include_depth);

}  // namespace fixtop
