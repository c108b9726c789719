// SPDX-License-Identifier: Apache-2.0
#pragma once

// Texts of any bytes on one line of output, and back.
//
// Line feed, carriage return and tab are written \n, \r and \t; every other control character and
// every byte that is no UTF-8 is written \xHH, each byte with its two hex digits. A backslash in
// front of what would then read as one of these is itself written \x5c, so that each text has one
// line and each line one text.

#include <string>
#include <string_view>

namespace fixtop {

std::string OneLine(std::string_view text);

// The text of a line; what is none of these is read as it stands.
std::string FromOneLine(std::string_view line);

// A message of another's making, which nobody reads back: the same, but that a backslash stays one.
std::string OneLineMessage(std::string_view text);

// A field of a table that has its own way with line feeds, which stay; else the same as OneLine.
std::string OneField(std::string_view text);

}  // namespace fixtop
