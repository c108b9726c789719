// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <string_view>

namespace fixtop::text_forms {

// A set of characters with one look-up for each test.
class CharacterSet {
 public:
    explicit constexpr CharacterSet(std::string_view characters) {
        for (char c : characters) has_[static_cast<unsigned char>(c)] = true;
    }
    constexpr bool operator()(char c) const noexcept { return has_[static_cast<unsigned char>(c)]; }

 private:
    std::array<bool, 256> has_{};
};

}  // namespace fixtop::text_forms
