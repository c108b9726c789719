// SPDX-License-Identifier: Apache-2.0
#include "platform/file_search.h"

#include <filesystem>
#include <system_error>

#include "platform/no_memory.h"

namespace fixtop {

namespace fs = std::filesystem;

std::string ProgramFolder() {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    ThrowIfNoMemory(error);
    return error ? std::string() : program.parent_path().string();
}

bool FileExists(const std::string& utf8_name) {
    std::error_code error;
    return fs::is_regular_file(utf8_name, error);
}

std::string FindFileOnPath(const std::string& name) {
    if (name.empty()) return {};
    std::error_code error;
    const fs::path current = fs::current_path(error);
    ThrowIfNoMemory(error);
    for (const fs::path& folder : {fs::path(ProgramFolder()), current}) {
        // An absolute name takes the place of the folder.
        const fs::path candidate = folder / name;
        if (candidate.is_absolute() && fs::is_regular_file(candidate, error)) {
            return candidate.string();
        }
    }
    return {};
}

}  // namespace fixtop
