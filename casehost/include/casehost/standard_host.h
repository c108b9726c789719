// SPDX-License-Identifier: Apache-2.0
#pragma once

// The host with all its parts: readers of every kind of file, the steady-state solver, and the
// built-in case.

#include <string_view>

#include "casehost/case_host.h"

namespace fixtop::casehost {

// The name under which OpenCase opens the built-in case: a gas plant, read from standard/demo/.
// Two raw gases are mixed and chilled; the cold gas drives an expander and cools the recompressed
// flash gas on its way to the sales line, the liquid is flashed, pumped and stabilised in a
// sub-flowsheet. Beside it stands equipment that the solver has no model for, with numbers that
// were put down once.
//
// The constants of the compounds are from R. C. Reid, J. M. Prausnitz, B. E. Poling, The Properties
// of Gases and Liquids, 4th ed., McGraw-Hill 1987, Appendix A. The rate data of the reactions are
// made up: they show the shape and take part in no solve.
inline constexpr std::string_view kDemoName = "demo";

// Makes readers, writers and the solver known to `host`.
void UseStandardParts(CaseHost& host);

// Opens a file, or the built-in case by its name, which is solved at once.
OpenResult OpenCase(CaseHost& host, const std::string& path_or_name);

}  // namespace fixtop::casehost
