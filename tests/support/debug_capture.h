// SPDX-License-Identifier: Apache-2.0
#pragma once

// Collects the debug output as long as it lives; one at a time.

#include <string>
#include <vector>

#include "platform/debug_output.h"

namespace fixtop {

class DebugCapture {
 public:
    DebugCapture() : former_(SetDebugSink(&DebugCapture::Write)) { Pieces().clear(); }
    ~DebugCapture() { SetDebugSink(former_); }
    DebugCapture(const DebugCapture&) = delete;
    DebugCapture& operator=(const DebugCapture&) = delete;

    // The texts written so far, one entry a call.
    static std::vector<std::string>& Pieces() {
        static std::vector<std::string> pieces;
        return pieces;
    }

 private:
    static void Write(const char* text) { Pieces().emplace_back(text); }

    DebugSink former_;
};

}  // namespace fixtop
