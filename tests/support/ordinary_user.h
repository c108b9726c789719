// SPDX-License-Identifier: Apache-2.0
#pragma once

// POSIX only: rights to files are asked for as by somebody who is not root, as long as it lives.

#include <unistd.h>

namespace fixtop {

class OrdinaryUser {
 public:
    OrdinaryUser() : former_(geteuid()) {
        if (former_ == 0) changed_ = seteuid(kNobody) == 0;
    }
    ~OrdinaryUser() {
        if (changed_ && seteuid(former_) != 0) _exit(1);
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
    static constexpr uid_t kNobody = 65534;

    uid_t former_;
    bool changed_ = false;
};

}  // namespace fixtop
