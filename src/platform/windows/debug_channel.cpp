// SPDX-License-Identifier: Apache-2.0
#include "platform/debug_channel.h"

#include <windows.h>

namespace fixtop {

void WriteToDebugChannel(const char* text) {
    OutputDebugStringA(text);
}

}  // namespace fixtop
