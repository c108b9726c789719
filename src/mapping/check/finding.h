// SPDX-License-Identifier: Apache-2.0
#pragma once

// What a check of class and map files has to say, with the places.

#include <deque>
#include <span>
#include <string>
#include <vector>

namespace fixtop {

// The numbers are part of the interface. A mistake makes a reader leave something out, or do what
// nobody can have meant; an attribute without a translator is for its author to know.
enum class FindingKind : int { kMistake = 1, kUnmapped = 2 };

// A file by its number in Findings; line 0 is the file as a whole.
struct FindingPlace {
    int file = 0;
    int line = 0;
};

struct Finding {
    FindingKind kind;
    std::string file;
    int line;
    std::string text;
};

class Findings {
 public:
    // Further ones are counted in a last one.
    static constexpr std::size_t kMost = 10000;

    // Answers the number of the file, under which it is shown from then on.
    int AddFile(std::string shown);
    void Mistake(FindingPlace place, std::string text) {
        Add(FindingKind::kMistake, place, std::move(text));
    }
    void Unmapped(FindingPlace place, std::string text) {
        Add(FindingKind::kUnmapped, place, std::move(text));
    }
    // "line 3", or with the file where that is another than the one it is told in.
    std::string Shown(FindingPlace place, int told_in) const;

    // What follows a text that tells an unknown name: "; near: A, B", empty when none is near.
    // There is an end to the work on that: who has ten thousand mistakes is content with fewer
    // hints.
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

// "; right: A, B".
std::string Right(std::span<const char* const> names);

}  // namespace fixtop
