// SPDX-License-Identifier: Apache-2.0
#include "platform/debug_channel.h"

#include <cstdio>

namespace fixtop {

void WriteToDebugChannel(const char* text) {
    std::fputs(text, stderr);
}

}  // namespace fixtop
