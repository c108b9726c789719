// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace fixtop {

// The system's own channel for debug output, behind platform/debug_output.h.
void WriteToDebugChannel(const char* text);

}  // namespace fixtop
