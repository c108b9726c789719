// SPDX-License-Identifier: Apache-2.0
#pragma once

// Files that survive a crash, and what is left of those that did not: what the standard library
// lacks to know that the disk has a file, and that nobody is at work on it. One source for each
// platform, chosen by the build.

#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

namespace fixtop::casehost::files {

// A file that is to take the place of another, its target, once it is whole. As long as one lives
// its file is seen to be in use, by other processes too, and a signal that would end the process
// waits: writing is given up then and the file goes first. A file that took no place is removed.
//
// Nobody reads it who may not read the target: until it takes the place it is its maker's alone.
// Then it has the target's owner, group and rights, as far as the maker may give them.
class NewFile {
 public:
    explicit NewFile(std::filesystem::path target);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    // Begins the file under a name. Where that is taken, also by a link that leads nowhere, the
    // error is file_exists and what has it is left alone.
    std::error_code Open(const std::filesystem::path& name);
    // Writes at the end; comes back with `interrupted` when a signal waits.
    std::error_code Append(std::string_view text);
    // Comes back when the disk has the whole, or with `interrupted`. Nothing is written behind it.
    std::error_code Sync();
    // Takes the target's place in one step. On an error both are as they were.
    std::error_code TakePlace();

 private:
    struct State;
    std::unique_ptr<State> state_;
};

// Removes a file unless it is in use as a NewFile, or no file at all. Where nothing tells who is at
// work on a file, none is removed.
void RemoveUnused(const std::filesystem::path& name);

// Something that is neither file nor folder has the name: a pipe, or a device.
bool IsDevice(const std::filesystem::path& name);

}  // namespace fixtop::casehost::files
