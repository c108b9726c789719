// SPDX-License-Identifier: Apache-2.0
// The turn is a lock on the folder, since the file itself is replaced by each save.

#include "casehost/file_turn.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace fixtop::casehost {

struct FileTurn::Lock {
    int folder = -1;
};

FileTurn::FileTurn(const std::string& path) : lock_(std::make_unique<Lock>()) {
    std::error_code ignored;
    const auto target = std::filesystem::weakly_canonical(path, ignored);
    const std::string folder = ignored ? "." : target.parent_path().string();
    lock_->folder = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (lock_->folder < 0) return;
    while (flock(lock_->folder, LOCK_EX) != 0 && errno == EINTR) {
    }
}

FileTurn::~FileTurn() {
    if (lock_->folder >= 0) close(lock_->folder);
}

}  // namespace fixtop::casehost
