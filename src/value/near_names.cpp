// SPDX-License-Identifier: Apache-2.0
#include "fixtop/near_names.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace fixtop {

namespace {

char Folded(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool BeginsWith(std::string_view name, std::string_view beginning) {
    return name.size() >= beginning.size() &&
           std::equal(beginning.begin(), beginning.end(), name.begin(),
                      [](char a, char b) { return Folded(a) == Folded(b); });
}

// The distance, or anything above `limit` when it is above that: names of quite other lengths need
// not be compared.
std::size_t DistanceUpTo(std::size_t limit, std::string_view a, std::string_view b) {
    const std::size_t least = a.size() > b.size() ? a.size() - b.size() : b.size() - a.size();
    return least > limit ? least : EditDistance(a, b);
}

}  // namespace

std::size_t EditDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (Folded(a[i]) != Folded(b[j]));
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

std::vector<std::string> NearNames(const std::string& wanted, const std::vector<std::string>& names,
                                   std::size_t limit) {
    if (wanted.empty()) return {};
    const std::size_t farthest = std::max<std::size_t>(1, wanted.size() / 3);
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& name : names) {
        const std::size_t distance = DistanceUpTo(farthest, wanted, name);
        if (distance <= farthest) {
            near.emplace_back(distance, name);
        } else if (wanted.size() >= 2 && BeginsWith(name, wanted)) {
            near.emplace_back(farthest + 1, name);
        }
    }
    std::stable_sort(near.begin(), near.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> nearest;
    for (const auto& [distance, name] : near) {
        if (nearest.size() == limit) break;
        if (std::find(nearest.begin(), nearest.end(), name) == nearest.end())
            nearest.push_back(name);
    }
    return nearest;
}

}  // namespace fixtop
