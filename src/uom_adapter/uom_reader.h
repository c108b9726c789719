// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace fixtop {

class UomDefinitions;

// Adds what a file or resource defines. Answers why it can't be read, with file and line where the
// parser tells them; empty when it was read to its end.
std::string ReadUomDefinitions(const std::string& name, UomDefinitions& definitions);

}  // namespace fixtop
