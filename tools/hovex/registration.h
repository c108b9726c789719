// SPDX-License-Identifier: Apache-2.0
#pragma once

// Makes Fixtop.Case known to the system, by the place where this program lies now, and forgets it
// again. On Windows for the user alone; under Wine, which looks there for no class, for the
// machine, that is, in its prefix. Nothing else is written.

#include <string>

namespace fixtop::hovex {

// Both answer what went wrong, empty when it is done. What is not there is forgotten already.
std::string Register();
std::string Unregister();

}  // namespace fixtop::hovex
