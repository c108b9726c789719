// SPDX-License-Identifier: Apache-2.0
#pragma once

// FileTurn: the turn of whoever reads a file, changes what he read and writes it again. Another one
// on the same file, in this process or another, waits until it ends; nothing stays beside the file.
// Where the system can't tell turns apart nobody waits.

#include <memory>
#include <string>

namespace fixtop::casehost {

class FileTurn {
 public:
    // The file need not be there.
    explicit FileTurn(const std::string& path);
    ~FileTurn();
    FileTurn(const FileTurn&) = delete;
    FileTurn& operator=(const FileTurn&) = delete;

 private:
    struct Lock;
    std::unique_ptr<Lock> lock_;
};

}  // namespace fixtop::casehost
