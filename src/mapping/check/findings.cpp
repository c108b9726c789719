// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/findings.h"

#include <algorithm>
#include <tuple>

#include "fixtop/near_names.h"
#include "mapping/check/listed_names.h"

namespace fixtop {

namespace {

constexpr std::size_t kMostCompared = 1000000000;

}  // namespace

int Findings::AddFile(std::string shown) {
    files_.push_back(std::move(shown));
    return static_cast<int>(files_.size()) - 1;
}

void Findings::Mistake(FindingPlace place, std::string text) {
    Add(FindingKind::kMistake, place, std::move(text));
}

void Findings::Unmapped(FindingPlace place, std::string text) {
    Add(FindingKind::kUnmapped, place, std::move(text));
}

void Findings::Add(FindingKind kind, FindingPlace place, std::string text) {
    if (rows_.size() < kMost) {
        rows_.push_back({kind, place, std::move(text)});
    } else {
        ++left_out_;
    }
}

std::string Findings::Shown(FindingPlace place, int told_in) const {
    const std::string line = std::to_string(place.line);
    if (place.file == told_in) return "line " + line;
    return files_[static_cast<std::size_t>(place.file)] + ":" + line;
}

std::string Findings::Near(const std::string& wanted, const std::vector<std::string>& names) {
    for (const std::string& name : names) compared_ += wanted.size() * name.size();
    if (compared_ > kMostCompared) return "";
    return Listed("; near: ", NearNames(wanted, names));
}

std::vector<Finding> Findings::Sorted() const {
    std::vector<Row> rows = rows_;
    std::stable_sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) {
        return std::tie(a.place.file, a.place.line) < std::tie(b.place.file, b.place.line);
    });
    std::vector<Finding> sorted;
    sorted.reserve(rows.size() + 1);
    for (Row& row : rows) {
        sorted.push_back({row.kind, files_[static_cast<std::size_t>(row.place.file)],
                          row.place.line, std::move(row.text)});
    }
    if (left_out_ > 0) {
        sorted.push_back({FindingKind::kMistake, sorted.back().file, 0,
                          std::to_string(left_out_) + " more findings are not told"});
    }
    return sorted;
}

}  // namespace fixtop
