// SPDX-License-Identifier: Apache-2.0
#pragma once

// What a read has answered, where a client asks for a number.

#include "fixtop/value.h"

namespace fixtop {

// There was no node to read from: the message that says so stands in the place of the value.
bool LacksNode(const FIValue& read);

// NaN for what is no number, so that nobody takes it for one.
double ToRealOrNan(const FIValue& read);

}  // namespace fixtop
