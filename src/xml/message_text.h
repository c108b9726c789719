#pragma once

// A message text from a printf format and its arguments, of any length.

#include <string>

std::string MessageText(const char* format, ...);
