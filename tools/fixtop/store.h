#pragma once

// Stores into the tree, as typed on a command line.

#include <string>

namespace fixtop {

struct Located;

// Stores a text: as a number in a node of numbers, and nothing at all as NULL. With `unit`, the
// node is shown in it from then on. Answers the reason of a refusal, or an empty text. What was
// stored is looked at again: a fraction may stand there as its share of all, and nothing else than
// it was given.
std::string Store(const Located& place, const std::string& value, const std::string& unit);

}  // namespace fixtop
