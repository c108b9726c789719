// SPDX-License-Identifier: Apache-2.0
#include "process_life.h"

#include <windows.h>

#include <atomic>
#include <utility>
#include <vector>

namespace fixtop::hovex {

namespace {

std::atomic<int> holders{0};
std::atomic<bool> had_any{false};
const DWORD apartment_thread = GetCurrentThreadId();
std::vector<std::function<void()>> posted;

void Dispatch(const MSG& message) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

void RunPosted() {
    for (const auto& work : std::exchange(posted, {})) work();
}

void CALLBACK EndUnlessHeld(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    if (!had_any) PostQuitMessage(0);
}

}  // namespace

void ProcessLife::Begin() {
    had_any = true;
    ++holders;
}

void ProcessLife::End() {
    if (--holders == 0) PostThreadMessageW(apartment_thread, WM_QUIT, 0, 0);
}

void ProcessLife::Post(std::function<void()> work) {
    posted.push_back(std::move(work));
}

void ProcessLife::Loop(unsigned patience_ms) {
    if (patience_ms > 0) SetTimer(nullptr, 0, patience_ms, EndUnlessHeld);
    MSG message;
    // Somebody may have come after the last one went.
    do {
        while (GetMessageW(&message, nullptr, 0, 0) > 0) {
            Dispatch(message);
            RunPosted();
        }
    } while (holders > 0);
}

bool ProcessLife::LetCallsIn() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message != WM_QUIT) {
            Dispatch(message);
            continue;
        }
        PostQuitMessage(0);
        return false;
    }
    return true;
}

}  // namespace fixtop::hovex
