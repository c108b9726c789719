#pragma once

// Where a file named without a folder lies: beside the program first, then in the working
// directory, on Windows then along the system's own search path. A name with an absolute path is
// only checked.

#include <string>
#include <string_view>

// The full path, or an empty text when there is no such file.
std::string FindFileOnPath(const std::string& name);

// Whether a file, not a folder, has this name, which is UTF-8 on every system.
bool FileExists(const std::string& utf8_name);

// Whether a name that comes out of a file may be sought: it names no drive, does not begin at a
// root and never climbs to a parent folder.
bool StaysInSearchFolders(std::string_view name);

// The folder of the running program, without a separator at the end.
std::string ProgramFolder();
