// SPDX-License-Identifier: Apache-2.0
#pragma once

// WatchedSolve: a solve of which every change of chosen nodes is written, a line each: path, old
// value, new value, unit.

#include "fixtop/client.h"
#include "stores.h"
#include "word.h"

namespace fixtop {

class WatchedSolve {
 public:
    // --set and --json
    void Declare(CLI::App& app);
    client::Watch& Watched() { return watch_; }
    // Stores first what --set says. Failed when a store was refused, or the solve did not complete.
    ExitCode Run(CommandContext& around);

 private:
    void Write(const client::Change& change, Output& out) const;

    Stores stores_;
    client::Watch watch_;
    bool json_ = false;
};

}  // namespace fixtop
