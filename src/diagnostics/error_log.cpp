// SPDX-License-Identifier: Apache-2.0
#include "diagnostics/error_log.h"

#include <cstdio>
#include <ctime>

#include "diagnostics/memory_guard.h"
#include "platform/open_file.h"

namespace fixtop {

void ErrorLog::SetFile(const char* name) {
    file_ = name == nullptr ? "" : name;
    if (!opened_) return;
    opened_ = false;
    level_ = kDefaultLevel;
}

int ErrorLog::SetLevel(int level) noexcept {
    const int former = level_;
    level_ = level;
    return former;
}

void ErrorLog::Open(const char* name) {
    if (name != nullptr && *name != '\0') file_ = name;
    if (file_.empty()) file_ = kDefaultFile;
    opened_ = true;
    const std::time_t now = std::time(nullptr);
    char time[16] = "";
    char date[16] = "";
    if (const std::tm* local = std::localtime(&now)) {
        std::strftime(time, sizeof time, "%H:%M:%S", local);
        std::strftime(date, sizeof date, "%m/%d/%y", local);
    }
    if (const auto file = OpenFile(file_, "w")) {
        std::fprintf(file.get(), " FI Error Log, %s, %s\n\n", time, date);
    }
}

void ErrorLog::Message(const char* text) {
    if (!opened_) Open(nullptr);
    if (const auto file = OpenFile(file_, "a+")) {
        std::fprintf(file.get(), " %s\n", text == nullptr ? "" : text);
    }
    if (listener_ == nullptr) return;
    memory::Outside([&] { listener_(listener_owner_, text == nullptr ? "" : text); });
}

void ErrorLog::SetListener(LogListener listener, void* owner) noexcept {
    listener_ = listener;
    listener_owner_ = owner;
}

void ErrorLog::AtLevel(const char* text, int level) {
    if (level <= level_) Message(text);
}

namespace {

bool IsControl(unsigned char c) {
    constexpr unsigned char kDelete = 0x7f;
    return c < ' ' || c == kDelete;
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
