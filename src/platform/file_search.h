// SPDX-License-Identifier: Apache-2.0
#pragma once

// Where a file named without a folder lies: beside the program first, then in the working
// directory, on Windows then along the system's own search path. A name with an absolute path is
// only checked. Names and paths are UTF-8 on every system.

#include <string>
#include <string_view>

namespace fixtop {

// The full path, or an empty text when there is no such file.
std::string FindFileOnPath(const std::string& name);

// Whether a file, not a folder, has this name.
bool FileExists(const std::string& utf8_name);

// Whether a name that comes out of a file may be sought or written: it names no drive, does not
// begin at a root, never climbs to a parent folder, and has no part that Windows takes for a device
// ("NUL", "com1.xml") or for a parent (".. "). The rule is one on every system.
bool StaysInSearchFolders(std::string_view name);

// The folder of the running program, without a separator at the end.
std::string ProgramFolder();

}  // namespace fixtop
