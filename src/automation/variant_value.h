// SPDX-License-Identifier: Apache-2.0
#pragma once

// Between the values of the tree and those of automation members.

#include "fixtop/automation/variant.h"
#include "fixtop/value.h"

namespace fixtop {

// A text is copied to task memory, or bad_alloc thrown.
Variant ToVariant(const FIValue& value);
// NULL for what is no number and no text.
FIValue ToValue(const Variant& variant);
// Frees what the variant leads to, and makes it empty.
void ClearVariant(Variant& variant) noexcept;

}  // namespace fixtop
