// SPDX-License-Identifier: Apache-2.0
// The turn is a file beside the other one that a single process can have open, and that the system
// removes with the last handle on it.

#include "casehost/file_turn.h"

#include <windows.h>

#include <filesystem>

namespace fixtop::casehost {

struct FileTurn::Lock {
    HANDLE file = INVALID_HANDLE_VALUE;
};

namespace {

constexpr DWORD kAgainAfter_ms = 20;

bool IsTaken(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_DELETE_PENDING;
}

}  // namespace

FileTurn::FileTurn(const std::string& path) : lock_(std::make_unique<Lock>()) {
    std::filesystem::path turn(std::u8string(path.begin(), path.end()));
    turn += ".turn";
    do {
        lock_->file = CreateFileW(turn.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                  FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
        if (lock_->file != INVALID_HANDLE_VALUE || !IsTaken(GetLastError())) return;
        Sleep(kAgainAfter_ms);
    } while (true);
}

FileTurn::~FileTurn() {
    if (lock_->file != INVALID_HANDLE_VALUE) CloseHandle(lock_->file);
}

}  // namespace fixtop::casehost
