// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace fixtop::casehost::importer {

// The name of an entry that does not say how it is written: what reads as UTF-8 is taken so,
// anything else as the first personal computers wrote it, code page 437.
std::string ZipNameAsUtf8(std::string_view name);

}  // namespace fixtop::casehost::importer
