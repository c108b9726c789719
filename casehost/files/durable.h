#pragma once

// Files that survive a crash: what the standard library lacks to know that the disk has them. One
// source for each platform, chosen by the build.

#include <filesystem>
#include <string_view>
#include <system_error>

namespace casehost::files {

// Writes a new file and comes back when the disk has it. It can be read and written by whoever may
// do so with the file `like`, where there is one and permissions lie in the file. A file that could
// not be written whole is removed. Where the name is taken, also by a link that leads nowhere, the
// error is file_exists and what has it is left alone.
std::error_code WriteThrough(const std::filesystem::path& path, std::string_view text,
                             const std::filesystem::path& like);

// Gives the file `from` the name `to`, in one step over a file that has it. On an error both are as
// they were.
std::error_code Replace(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace casehost::files
