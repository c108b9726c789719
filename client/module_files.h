// SPDX-License-Identifier: Apache-2.0
#pragma once

// The files of a neutral view as the module takes them.

#include "fixtop/client/case.h"
#include "fixtop/fixtop.h"

namespace fixtop::client {

// Lends the texts of `files`.
FixtopModelFiles GivenFiles(const ModelFiles& files, bool whole_lists);

}  // namespace fixtop::client
