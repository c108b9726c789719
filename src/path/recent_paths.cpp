// SPDX-License-Identifier: Apache-2.0
#include "path/recent_paths.h"

#include <array>
#include <functional>
#include <string_view>

namespace fixtop {

namespace {

using Held = std::shared_ptr<const PreparedPath>;

// Each text has one place, where the last one is kept. Never destroyed: paths may be walked while
// the process ends.
Held& PlaceOf(std::string_view text) {
    static auto& places = *new std::array<Held, kRecentPaths>;
    return places[std::hash<std::string_view>()(text) % places.size()];
}

}  // namespace

std::shared_ptr<const PreparedPath> RecentPath(const FIValue& source) {
    const std::string_view text = source.IsText() ? source.CStr() : "";
    if (!source.IsText() || text.size() > kRecentPathLength) {
        return std::make_shared<const PreparedPath>(source);
    }
    Held& held = PlaceOf(text);
    if (!held || held->Source() != text) held = std::make_shared<const PreparedPath>(source);
    return held;
}

}  // namespace fixtop
