// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "mapping/nodes/application_faces.h"

namespace fixtop {

// Why the translators of an attribute that apply lead to no node: of the first one that fails.
std::string WhyNoNode(const FaceQuery& query);

}  // namespace fixtop
