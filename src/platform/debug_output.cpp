// SPDX-License-Identifier: Apache-2.0
#include "platform/debug_output.h"

#include "platform/debug_channel.h"

namespace fixtop {

namespace {

DebugSink g_sink = nullptr;

}  // namespace

void WriteDebugLine(const char* text) {
    if (g_sink != nullptr) {
        g_sink(text);
    } else {
        WriteToDebugChannel(text);
    }
}

DebugSink SetDebugSink(DebugSink sink) noexcept {
    const DebugSink former = g_sink;
    g_sink = sink;
    return former;
}

}  // namespace fixtop
