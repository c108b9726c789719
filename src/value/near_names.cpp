// SPDX-License-Identifier: Apache-2.0
#include "fixtop/near_names.h"

#include <algorithm>
#include <array>
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

// The characters of a name, whatever their order: each one that is in another name alone has to be
// changed at least, which is found out sooner than the distance.
class Letters {
 public:
    explicit Letters(std::string_view name) : size_(name.size()) {
        for (char c : name) ++CountOf(c);
    }
    std::size_t LeastDistance(std::string_view other) {
        std::size_t shared = 0;
        for (char c : other) shared += CountOf(c)-- > 0;
        for (char c : other) ++CountOf(c);
        return std::max(size_, other.size()) - shared;
    }

 private:
    int& CountOf(char c) { return counts_[static_cast<unsigned char>(Folded(c))]; }

    std::size_t size_;
    std::array<int, 256> counts_ = {};
};

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
    Letters letters(wanted);
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& name : names) {
        const std::size_t least = letters.LeastDistance(name);
        const std::size_t distance = least > farthest ? least : EditDistance(wanted, name);
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
