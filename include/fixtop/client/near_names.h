// SPDX-License-Identifier: Apache-2.0
#pragma once

// Suggests what somebody meant who mistyped a name.

#include "fixtop/near_names.h"

namespace fixtop::client {

using fixtop::EditDistance;
using fixtop::NearNames;

}  // namespace fixtop::client
