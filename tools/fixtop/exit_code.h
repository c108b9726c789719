// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace fixtop {

// What the program tells its caller when it ends.
enum class ExitCode : int {
    kOk = 0,
    kFailed = 1,      // a path leads nowhere, a store was refused, a solve did not complete, or
                      // what was to be written can't be
    kUsage = 2,       // the command line is wrong
    kUnreadable = 3,  // the case can't be opened or not be saved, or memory ran out
};

}  // namespace fixtop
