// SPDX-License-Identifier: Apache-2.0
#pragma once

// What every store does with the solver: start it and wait, unless a batch is open.

#include <vector>

#include "host/host_object.h"

namespace fixtop {

// The streams under composition edit. While there is one, stores start no solve. A stream that goes
// in the meantime is none any more.
class HEditBatch {
 public:
    using Stream = HostObject<host::Viewable>;

    // True when the stream was not in the batch yet.
    bool Add(const Stream& stream);
    // True when it was in the batch.
    bool Remove(const Stream& stream);
    bool IsOpen();

 private:
    std::vector<Stream> streams_;
};

// Starts the solver of the main flowsheet and lets the host's loop run until it has ended, its stop
// flag is set or the case is gone. Callbacks arrive in the meantime. `always_wait` waits even where
// stores don't.
void SolveAndWait(const CaseLife& life, bool always_wait = false);

}  // namespace fixtop
