// SPDX-License-Identifier: Apache-2.0
#include "automation/object_thread.h"

#include <atomic>
#include <thread>
#include <utility>

namespace fixtop {

namespace {

std::atomic<int> g_alive{0};
std::atomic<std::thread::id> g_thread;
// Linked by `next_waiting_`.
std::atomic<ThreadBound*> g_waiting{nullptr};

}  // namespace

bool IsObjectThread() noexcept {
    return g_alive.load() == 0 || g_thread.load() == std::this_thread::get_id();
}

ThreadBound::ThreadBound() noexcept {
    if (g_alive.load() == 0) g_thread = std::this_thread::get_id();
    ++g_alive;
}

ThreadBound::~ThreadBound() {
    --g_alive;
}

void ThreadBound::End() noexcept {
    if (IsObjectThread()) {
        delete this;
        return;
    }
    next_waiting_ = g_waiting.load();
    while (!g_waiting.compare_exchange_weak(next_waiting_, this)) {
    }
}

void ThreadBound::EndWaiting() noexcept {
    if (!g_waiting.load()) return;
    ThreadBound* waiting = g_waiting.exchange(nullptr);
    while (waiting) delete std::exchange(waiting, waiting->next_waiting_);
}

}  // namespace fixtop
