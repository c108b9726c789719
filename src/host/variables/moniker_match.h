// SPDX-License-Identifier: Apache-2.0
#pragma once

// Compares the moniker of a variable with the beginning of a path in the host's notation.

#include <optional>
#include <string>

namespace fixtop {

struct MonikerMatch {
    // ".#index" for each index of an array that the path gave.
    std::string suffix;
    // What follows in the path; points into the given path.
    const char* rest;
};

// A ":" at the start of either is skipped, letters match without regard to case, and each "[]" of
// the moniker takes an index of the path. Nothing when the path does not begin with the moniker.
std::optional<MonikerMatch> MatchMoniker(const std::string& moniker, const char* path);

}  // namespace fixtop
