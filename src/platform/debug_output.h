// SPDX-License-Identifier: Apache-2.0
#pragma once

// The debug output: where reports for a developer go. On Windows a debugger shows it; elsewhere it
// is the standard error stream. Texts carry their own line ends.

namespace fixtop {

// Receives every text; called on the thread that writes.
using DebugSink = void (*)(const char* text);

void WriteDebugLine(const char* text);

// Leads the debug output elsewhere until the next call and answers the former sink; a null sink
// leads it back to the system's channel.
DebugSink SetDebugSink(DebugSink sink) noexcept;

}  // namespace fixtop
