#include "platform/debug_channel.h"

#include <windows.h>

void WriteToDebugChannel(const char* text) {
    OutputDebugStringA(text);
}
