// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "mapping/check/finding.h"

namespace fixtop {

// All that a check has to say.
class Findings {
 public:
    // Further ones are counted in a last one.
    static constexpr std::size_t kMost = 10000;

    // Answers the number of the file, under which it is shown from then on.
    int AddFile(std::string shown);
    void Mistake(FindingPlace place, std::string text);
    void Unmapped(FindingPlace place, std::string text);
    // "line 3", or with the file where that is another than the one it is told in.
    std::string Shown(FindingPlace place, int told_in) const;

    // What follows a text that tells an unknown name: "; near: A, B", empty when none is near.
    // There is an end to that work: who has ten thousand mistakes is content with fewer hints.
    std::string Near(const std::string& wanted, const std::vector<std::string>& names);

    // By file, in the order in which these were read, and by line.
    std::vector<Finding> Sorted() const;

 private:
    struct Row {
        FindingKind kind;
        FindingPlace place;
        std::string text;
    };

    void Add(FindingKind kind, FindingPlace place, std::string text);

    std::deque<std::string> files_;
    std::vector<Row> rows_;
    std::size_t left_out_ = 0;
    std::size_t compared_ = 0;  // characters with characters
};

}  // namespace fixtop
