// SPDX-License-Identifier: Apache-2.0
#pragma once

// The zip archive around a document.

#include <optional>
#include <string_view>

#include "problems.h"

namespace fixtop::casehost::importer {

inline constexpr std::size_t kMaxDocumentBytes = std::size_t{512} << 20;
// A document may grow to this many times the size of its archive; small ones always may.
inline constexpr std::size_t kMaxInflation = 200;
inline constexpr std::size_t kFreeInflationBytes = std::size_t{1} << 20;

// The one XML document of an archive, inflated; inflation stops as soon as the document grows past
// a limit, whatever sizes the archive declares. Null when the archive is not as it should be, and a
// problem then says why.
std::optional<std::string> InflateDocument(std::string_view archive, Problems& problems);

}  // namespace fixtop::casehost::importer
