// SPDX-License-Identifier: Apache-2.0
#pragma once

// Functions of the system, and modules built apart, tell that memory ran out as one failure among
// others, with the number that the C library leaves behind. Taken for another failure it would look
// as if a file or a module were not there.

#include <cerrno>
#include <new>
#include <system_error>

namespace fixtop {

// Runs a call whose answer is false or null when it failed; throws when it was for lack of memory.
template <class Call>
auto OrNoMemory(Call call) {
    errno = 0;
    auto answer = call();
    if (!answer && errno == ENOMEM) throw std::bad_alloc();
    return answer;
}

// The same for a call that tells by an error code.
inline void ThrowIfNoMemory(const std::error_code& error) {
    if (error == std::errc::not_enough_memory) throw std::bad_alloc();
}

}  // namespace fixtop
