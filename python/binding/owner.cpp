// SPDX-License-Identifier: Apache-2.0
#include "owner.h"

#include <thread>
#include <vector>

namespace fixtop::python {

namespace {

std::thread::id& OwnerThread() {
    static std::thread::id thread;
    return thread;
}

// Stands until the process ends: the thread on which it could be dropped may be gone by then.
std::vector<std::shared_ptr<void>>& Left() {
    static auto* left = new std::vector<std::shared_ptr<void>>;
    return *left;
}

}  // namespace

WrongThread::WrongThread()
    : std::runtime_error(
          "the open case belongs to another thread: call from the one that opened it") {}

void Owner::Claim() {
    if (held_ == 0) OwnerThread() = std::this_thread::get_id();
    Check();
}

bool Owner::IsHere() {
    return OwnerThread() == std::this_thread::get_id();
}

void Owner::Refuse() {
    throw WrongThread();
}

void Owner::Leave(std::shared_ptr<void> held) {
    Left().push_back(std::move(held));
    has_left_ = true;
}

void Owner::DropLeft() {
    has_left_ = false;
    // Dropping one may leave others.
    const auto left = std::exchange(Left(), {});
}

}  // namespace fixtop::python
