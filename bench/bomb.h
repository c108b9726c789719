// SPDX-License-Identifier: Apache-2.0
#pragma once

// A small archive of a flowsheet that inflates to 3 GB, for what refuses it.

#include <string>

namespace fixtop::bench {

// Answers the file, which the caller removes. Its directory tells the size.
std::string MakeBomb();
// From now on the headers of the bomb tell of a small document.
void MakeBombLie(const std::string& file);

}  // namespace fixtop::bench
