#pragma once

// Where a file named without a folder lies: beside the program first, then in the working
// directory, on Windows then along the system's own search path. A name with an absolute path is
// only checked.

#include <string>

// The full path, or an empty text when there is no such file.
std::string FindFileOnPath(const std::string& name);

// The folder of the running program, without a separator at the end.
std::string ProgramFolder();
