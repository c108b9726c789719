// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace fixtop::hovex {

// The program has no console of its own: texts go where its caller has sent them, or into the
// console that it was started from, or nowhere.
void Say(const std::string& text);
// The same on standard error.
void Complain(const std::string& text);

}  // namespace fixtop::hovex
