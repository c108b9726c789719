// SPDX-License-Identifier: Apache-2.0
#include "framework/nodes/standard_attributes.h"

#include <algorithm>
#include <cstring>

namespace fixtop {

bool IsStandardAttribute(const char* name) {
    constexpr std::array others = {kStale, kAttachments, kSkipCorrelations, kSkipAttachments};
    const auto is_name = [name](const char* each) { return std::strcmp(each, name) == 0; };
    return std::any_of(kStandardAttributes.begin(), kStandardAttributes.end(), is_name) ||
           std::any_of(others.begin(), others.end(), is_name);
}

}  // namespace fixtop
