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

}  // namespace fixtop
