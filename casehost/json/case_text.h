// SPDX-License-Identifier: Apache-2.0
#pragma once

// The two roads on which the text of a case is read, and its writing in pieces.

#include <functional>
#include <istream>
#include <memory>
#include <string>
#include <string_view>

#include "casehost/case_data.h"

namespace fixtop::casehost {

inline constexpr char kNoMemory[] = "not enough memory for this file";

// The case of a text that is as it should be, in the order in which cases are written: objects are
// made while it is read, and it is never held as a whole. Null for any other text, good or not.
std::unique_ptr<CaseData> ReadGoodCase(std::istream& in);

// The case of any good text, and what is wrong with any other. Takes more time and much memory.
ReadResult ReadAnyCase(const std::string& file, std::string_view text);

// The text of CaseToText, piece by piece.
void WriteCase(const CaseData& data, const std::function<void(std::string_view)>& take);

}  // namespace fixtop::casehost
