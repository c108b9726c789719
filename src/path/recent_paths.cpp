// SPDX-License-Identifier: Apache-2.0
#include "path/recent_paths.h"

#include <algorithm>
#include <array>
#include <functional>
#include <string_view>

namespace fixtop {

namespace {

using Held = std::shared_ptr<const PreparedPath>;

// Texts that fall into one set push out the one that was used the longest ago: a few that are read
// in turns have room side by side.
constexpr std::size_t kPlaces = 4;
using Set = std::array<Held, kPlaces>;

// Never destroyed: paths may be walked while the process ends.
Set& SetOf(std::string_view text) {
    static auto& sets = *new std::array<Set, kRecentPaths / kPlaces>;
    return sets[std::hash<std::string_view>()(text) % sets.size()];
}

// The one of this text, or else the place of the one that goes, comes to the front.
Held& BringForward(Set& set, std::string_view text) {
    const auto found = std::find_if(set.begin(), set.end() - 1, [text](const Held& each) {
        return each && each->Source() == text;
    });
    std::rotate(set.begin(), found, found + 1);
    return set.front();
}

}  // namespace

std::shared_ptr<const PreparedPath> RecentPath(const FIValue& source) {
    const std::string_view text = source.IsText() ? source.CStr() : "";
    if (!source.IsText() || text.size() > kRecentPathLength) {
        return std::make_shared<const PreparedPath>(source);
    }
    Held& held = BringForward(SetOf(text), text);
    if (!held || held->Source() != text) held = std::make_shared<const PreparedPath>(source);
    return held;
}

}  // namespace fixtop
