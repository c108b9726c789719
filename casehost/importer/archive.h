#pragma once

// The zip archive around a document.

#include <cstddef>
#include <functional>
#include <string_view>

#include "problems.h"

namespace fixtop::casehost::importer {

inline constexpr std::size_t kMaxDocumentBytes = std::size_t{512} << 20;
// A document may grow to this many times the size of its archive; small ones always may.
inline constexpr std::size_t kMaxInflation = 200;
inline constexpr std::size_t kFreeInflationBytes = std::size_t{1} << 20;

// Takes the next piece of the document; `last` comes with an empty piece at the end. False: stop.
using DocumentSink = std::function<bool(std::string_view piece, bool last)>;

// Inflates the one XML document of an archive into the sink, piece by piece, and stops as soon as
// it grows past a limit, whatever sizes the archive declares. False when the archive is not as it
// should be or the sink stopped; a fault of the archive then stands in the problems.
bool InflateDocument(std::string_view archive, Problems& problems, const DocumentSink& sink);

}  // namespace fixtop::casehost::importer
