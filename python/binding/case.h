// SPDX-License-Identifier: Apache-2.0
#pragma once

// Case, solving, holds and watched nodes as classes of Python.

#include <pybind11/pybind11.h>

#include "fixtop/client/case.h"
#include "owner.h"

namespace fixtop::python {

using PyCase = Owned<client::Case>;

void BindCase(pybind11::module_& module);
void BindSolving(pybind11::module_& module);
void BindReference(pybind11::module_& module);
void BindSelection(pybind11::module_& module);

}  // namespace fixtop::python
