// SPDX-License-Identifier: Apache-2.0
#pragma once

// Reading of solved flowsheets in .dwxmz files: a zip archive that holds one XML document.
//
// The result is a recording: every number that the file tells, turned into the internal unit of its
// quantity, and nothing that the file doesn't tell except Heat Flow and Molar Heat Capacity of a
// material stream and the Number of Trays of a column, which follow from it by definition. Null,
// NaN and infinite numbers of the file are empty. Duties are positive in the direction of their
// names: a heater, reboiler, compressor or reactor adds, a cooler or condenser removes.
//
// A file that breaks the format gives no case and one problem for each fault found, `where` naming
// the file, the line in its document and the path of the element. Remarks beside a case tell of
// unit operations that are kept without a meaning for their numbers. No file makes these functions
// throw. Memory is bounded: a document of more than 512 MiB, 5 million nodes or 256 levels, or one
// that grows more than 200-fold while it is inflated, is refused before it is held.

#include <string>
#include <string_view>

#include "casehost/case_data.h"

namespace fixtop::casehost {

// `path` is UTF-8.
ReadResult ReadDwxmz(const std::string& path);

// `label` stands for the file name in problems, and names a case that has no name of its own.
ReadResult ReadDwxmzBytes(std::string_view bytes, const std::string& label);

}  // namespace fixtop::casehost
