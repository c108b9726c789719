// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <atomic>
#include <cstdio>

#include "terminal.h"

namespace fixtop::terminal {

namespace {

std::string Utf8(const wchar_t* text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 1) return "";
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes.data(), size, nullptr, nullptr);
    bytes.pop_back();
    return bytes;
}

// Runs in a thread of its own.
std::atomic<bool> interrupted{false};
BOOL WINAPI Remember(DWORD event) {
    if (event != CTRL_C_EVENT) return FALSE;
    interrupted = true;
    return TRUE;
}

bool IsConsole(std::FILE* file) {
    return _isatty(_fileno(file)) != 0;
}

}  // namespace

void Prepare() {
    SetConsoleOutputCP(CP_UTF8);
    SetConsoleCP(CP_UTF8);
    for (std::FILE* file : {stdin, stdout, stderr}) {
        if (!IsConsole(file)) _setmode(_fileno(file), _O_BINARY);
    }
}

InterruptGuard::InterruptGuard() {
    interrupted = false;
    SetConsoleCtrlHandler(Remember, TRUE);
}
InterruptGuard::~InterruptGuard() {
    SetConsoleCtrlHandler(Remember, FALSE);
    interrupted = false;
}
bool IsInterrupted() {
    return interrupted;
}

std::vector<std::string> Arguments(int, char**) {
    int count = 0;
    wchar_t** values = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; values && i < count; ++i) arguments.push_back(Utf8(values[i]));
    LocalFree(values);
    return arguments;
}

bool InputIsTyped() {
    return IsConsole(stdin);
}
bool DataIsSeen() {
    return IsConsole(stdout);
}
bool NotesAreSeen() {
    return IsConsole(stderr);
}

int RunPython(std::vector<std::string>) {
    return -1;
}

std::unique_ptr<LineReader> OpenLineReader(Completer) {
    return OpenPlainReader();
}

}  // namespace fixtop::terminal
