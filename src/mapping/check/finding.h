// SPDX-License-Identifier: Apache-2.0
#pragma once

// What a check of class and map files has to say, with the places.

#include <string>

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

}  // namespace fixtop
