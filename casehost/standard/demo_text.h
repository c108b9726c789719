// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace fixtop::casehost {

// The built-in case, put together from demo/*.json by the build.
extern const std::string_view kDemoText;

}  // namespace fixtop::casehost
