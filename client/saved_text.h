// SPDX-License-Identifier: Apache-2.0
#pragma once

// Text files of the client library's own.

#include <memory>
#include <string>
#include <string_view>

namespace fixtop::client {

// Both throw CaseError, with the file and what is wrong. A text that could not be written whole
// leaves the file as it was.
std::string ReadSavedText(const std::string& file);
void WriteSavedText(const std::string& file, std::string_view text);

// Others who ask for it wait until what is answered ends.
std::shared_ptr<const void> TakeTurnAt(const std::string& file);

}  // namespace fixtop::client
