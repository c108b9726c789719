// SPDX-License-Identifier: Apache-2.0
#pragma once

// Case files of our own: JSON, described in docs/case-format.md and schema/case.schema.json.
//
// Reading is strict: whatever is not as the format says is a problem that names file, line and JSON
// path, and no case comes out. Writing loses nothing and is atomic, as casehost/text_file.h says.

#include <string>
#include <string_view>

#include "casehost/case_data.h"
#include "casehost/case_host.h"

namespace fixtop::casehost {

inline constexpr std::size_t kMaxCaseFileBytes = std::size_t{512} << 20;
inline constexpr std::size_t kMaxCaseObjects = 1'000'000;
inline constexpr std::size_t kMaxArrayElements = 1'000'000;  // of one variable
inline constexpr std::size_t kMaxCaseValues = 20'000'000;    // of all variables of all objects

ReadResult ReadCaseFile(const std::string& path);
// `file` stands in messages.
ReadResult ReadCaseText(const std::string& file, std::string_view text);

SaveResult WriteCaseFile(const CaseData& data, const std::string& path);
std::string CaseToText(const CaseData& data);

// Makes ".json" known to every CaseHost of the process.
void RegisterCaseFiles();

}  // namespace fixtop::casehost
