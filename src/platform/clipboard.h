// SPDX-License-Identifier: Apache-2.0
#pragma once

// ClipboardFormat: what another program puts on the system's clipboard in a format of its own name.

#include <optional>
#include <string>

namespace fixtop {

class ClipboardFormat {
 public:
    // False where the system has none: nothing is ever read.
    static bool IsThere() noexcept;

    // The name is lent.
    explicit constexpr ClipboardFormat(const char* name) : name_(name) {}

    // The bytes, a final NUL and what follows it included; nothing when there are none, or another
    // program keeps the clipboard. On a thread that has begun with the system's components their
    // way is gone, else the plain one.
    std::optional<std::string> Read();

 private:
    const char* const name_;
    // What the system calls the format; 0 until it is read first.
    unsigned number_ = 0;
};

}  // namespace fixtop
