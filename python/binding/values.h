// SPDX-License-Identifier: Apache-2.0
#pragma once

// Values of the library as objects of Python: none, int, float, str.

#include <pybind11/pybind11.h>

#include "fixtop/value.h"

namespace fixtop::python {

pybind11::object ObjectOf(const FIValue& value);
// Throws TypeError for what is no value, and ValueError for numbers that no node can hold: NaN and
// the infinities.
FIValue ValueOf(const pybind11::handle& object);

}  // namespace fixtop::python
