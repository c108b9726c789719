// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace fixtop::casehost {

// The built-in case, demo.json, as the build took it in.
extern const std::string_view kDemoText;

}  // namespace fixtop::casehost
