// SPDX-License-Identifier: Apache-2.0
#pragma once

// The errors of the library as those of the package.

#include <pybind11/pybind11.h>

namespace fixtop::python {

// Has each exception of the library raised as the class of `fixtop.errors` that stands for it, with
// its path and texts.
void TranslateErrors();

}  // namespace fixtop::python
