#pragma once

// The host with all its parts: readers of every kind of file, the steady-state solver, and the
// built-in case.

#include <string_view>

#include "casehost/case_host.h"

namespace fixtop::casehost {

// The name under which OpenCase opens the built-in case.
inline constexpr std::string_view kDemoName = "demo";

// The built-in case, a small gas plant; its calculated values are empty until it is solved.
CaseData DemoCase();

// Makes readers, writers and the solver known to `host`.
void UseStandardParts(CaseHost& host);

// Opens a file, or the built-in case by its name, which is solved at once.
OpenResult OpenCase(CaseHost& host, const std::string& path_or_name);

}  // namespace fixtop::casehost
