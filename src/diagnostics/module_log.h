// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "diagnostics/error_log.h"

namespace fixtop {

// The log of the module.
ErrorLog& ModuleLog();

void SetLogFile(const char* name);
int SetLogLevel(int level);
void OpenErrorLog(const char* name);
void LogMessage(const char* text);
void LogAtLevel(const char* text, int level);
// A line that readers of the results must see too, since these don't tell: it goes to standard
// error as well, with "?" for control characters.
void LogAndTell(const char* text);

}  // namespace fixtop
