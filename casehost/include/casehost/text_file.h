// SPDX-License-Identifier: Apache-2.0
#pragma once

// Text files that are read and written as a whole.
//
// Writing is atomic: a draft beside the target is written, and takes the target's place and its
// permissions once the disk has it. A file that may not be written is not replaced, and neither is
// what is no file. A save that fails or is interrupted leaves the old file as it was and nothing
// beside it; what a killed one leaves is removed by the next. Of several that save to one file at a
// time the last one wins.

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace fixtop::casehost {

// Null, and `problem` tells why, when it can't be read, or is larger than `limit` bytes.
std::optional<std::string> ReadTextFile(const std::string& path, std::size_t limit,
                                        std::string& problem);
// What is wrong; empty when it was written.
std::string WriteTextFile(const std::string& path, std::string_view text);
// The same for a text that is made in pieces: `make` hands each to what it is given.
using TextTaker = std::function<void(std::string_view piece)>;
using TextMaker = std::function<void(const TextTaker& take)>;
std::string WriteTextFile(const std::string& path, const TextMaker& make);

}  // namespace fixtop::casehost
