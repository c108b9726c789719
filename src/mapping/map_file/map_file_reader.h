// SPDX-License-Identifier: Apache-2.0
#pragma once

// The reader of map files, root element CCDMMapFile. What a file says is in force for what follows
// it, also in the files that it includes; of an unknown element or attribute the log warns.

#include <string>

#include "model/class_library.h"
#include "xml/xml_file.h"

namespace fixtop {

// Of one map.
inline constexpr std::size_t kMostMapFiles = 4096;

// What a file and those that it includes share.
struct MapReading {
    CCDMClassLibrary& library;
    CCDMBranch root_branch;  // of translators at the root: the default before the first file
    int include_depth = 0;
};

// Reads one file, once for the library, and in its place whatever it includes.
bool ReadMapFileInto(const MapReading& reading, const std::string& file, ModelFileOrigin origin);

}  // namespace fixtop
