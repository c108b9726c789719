// SPDX-License-Identifier: Apache-2.0
#pragma once

// The life of the process: it serves as long as somebody outside holds an object or a lock of it.
// Threads: Begin and End on any, the rest on the one of the apartment.

#include <functional>

namespace fixtop::hovex {

class ProcessLife {
 public:
    // An object or a lock comes; when the last one goes the process ends.
    static void Begin();
    static void End();

    // Runs in the next turn of the loop, with no caller on the stack.
    static void Post(std::function<void()> work);
    // Turns until the process ends. When nobody has come within so many milliseconds it ends too;
    // 0 waits for ever.
    static void Loop(unsigned patience_ms);
    // Lets calls from outside in while a long one runs; false when the process is to end.
    static bool LetCallsIn();
};

}  // namespace fixtop::hovex
