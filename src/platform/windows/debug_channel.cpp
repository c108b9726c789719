#include "platform/debug_channel.h"

#include <windows.h>

namespace fixtop {

void WriteToDebugChannel(const char* text) {
    OutputDebugStringA(text);
}

}  // namespace fixtop
