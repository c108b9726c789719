// SPDX-License-Identifier: Apache-2.0
#pragma once

// The module's texts that are read as more than texts.

#include <string>

namespace fixtop::client {

class Node;

// A node's object is not there.
bool IsGoneText(const std::string& text);
// Throws Gone or Refused, unless the text is empty.
void ThrowIfRefused(const Node& node, const std::string& text);

}  // namespace fixtop::client
