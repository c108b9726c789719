// SPDX-License-Identifier: Apache-2.0
#pragma once

// The errors of the library as those of the package.

#include <pybind11/pybind11.h>

namespace fixtop::python {

// Has each exception of the library raised as the class of `fixtop.errors` that stands for it, with
// its path and texts.
void TranslateErrors();

// Raises what is thrown at the moment in the same way; for calls that come past pybind11.
void RaiseThrown();

}  // namespace fixtop::python
