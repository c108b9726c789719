#include "platform/debug_channel.h"

#include <cstdio>

void WriteToDebugChannel(const char* text) {
    std::fputs(text, stderr);
}
