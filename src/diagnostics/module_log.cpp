// SPDX-License-Identifier: Apache-2.0
#include "diagnostics/module_log.h"

#include <cstdio>
#include <string>

namespace fixtop {

namespace {

bool IsControl(unsigned char c) {
    return c < ' ' || c == '\x7f';  // DEL
}

// In UTF-8 the upper control characters are two bytes, of which this is the first.
constexpr char kUpperLead = '\xc2';
bool IsUpperControl(unsigned char second) {
    return second >= 0x80 && second < 0xa0;
}

std::string WithoutControls(const char* text) {
    std::string plain;
    for (; *text != '\0'; ++text) {
        const bool is_upper = *text == kUpperLead && IsUpperControl(text[1]);
        plain += is_upper || IsControl(*text) ? '?' : *text;
        if (is_upper) ++text;
    }
    return plain;
}

}  // namespace

ErrorLog& ModuleLog() {
    static ErrorLog log;
    return log;
}

void SetLogFile(const char* name) {
    ModuleLog().SetFile(name);
}
int SetLogLevel(int level) {
    return ModuleLog().SetLevel(level);
}
void OpenErrorLog(const char* name) {
    ModuleLog().Open(name);
}
void LogMessage(const char* text) {
    ModuleLog().Message(text);
}
void LogAtLevel(const char* text, int level) {
    ModuleLog().AtLevel(text, level);
}
void LogAndTell(const char* text) {
    LogMessage(text);
    std::fprintf(stderr, "%s\n", WithoutControls(text).c_str());
}

}  // namespace fixtop
