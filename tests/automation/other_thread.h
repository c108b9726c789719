// SPDX-License-Identifier: Apache-2.0
#pragma once

// What an object answers to a client that has carried its pointer to another thread.

#include <gtest/gtest.h>

#include <array>
#include <thread>

#include "automation/objects.h"

namespace fixtop {

// What `call` answers on a thread of its own.
template <class Call>
auto OnOtherThread(Call call) {
    decltype(call()) answer{};
    std::thread([&] { answer = call(); }).join();
    return answer;
}

// Where members may write whatever they write, and read a text; all zero.
struct Scratch {
    void* At(std::size_t place) { return rows[place].data(); }
    std::array<std::array<char, 64>, 5> rows{};
};

// QueryInterface and the members from `first` to `last` of the object's table. None may do
// anything, so any pointer will do for an argument.
inline void ExpectRefused(void* object, int first, int last) {
    Scratch scratch;
    const auto call = [&](int slot) {
        return OnOtherThread([&] {
            return CallSlot(object, slot, scratch.At(0), scratch.At(1), scratch.At(2),
                            scratch.At(3), scratch.At(4));
        });
    };
    for (int slot = first; slot <= last; ++slot) EXPECT_EQ(kResultWrongThread, call(slot)) << slot;
    void* out = NoPointer<void>();
    EXPECT_EQ(kResultWrongThread, OnOtherThread([&] {
                  return static_cast<IUnknown*>(object)->QueryInterface(IUnknown::kId, &out);
              }));
    EXPECT_EQ(nullptr, out);
}

}  // namespace fixtop
