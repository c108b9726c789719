// SPDX-License-Identifier: Apache-2.0
#pragma once

// The check of a class library and a map, for those who write them. Files are found and bounded as
// the readers find and bound them; nothing is opened on a case.

#include <vector>

#include "mapping/check/finding.h"
#include "mapping/open/model_files.h"

namespace fixtop {

std::vector<Finding> CheckModel(const ModelFiles& files);

}  // namespace fixtop
