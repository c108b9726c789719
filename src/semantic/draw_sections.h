// SPDX-License-Identifier: Apache-2.0
#pragma once

// The sections of a column that draw a stream. The host has for each phase a list of sections with
// all their draws.

#include <string>

#include "fixtop/iterator.h"

namespace fixtop::semantic {

// The section that draws the stream: its list becomes the variable "Draws", its element there
// "DrawsElemNum". A stream that no section draws is put down to the last list. `it` stays.
void SetDrawSection(FIIteratorBase& it, const std::string& stream);

}  // namespace fixtop::semantic
