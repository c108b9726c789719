// SPDX-License-Identifier: Apache-2.0
#include "automation/read_value.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <string_view>

#include "collection/collection.h"
#include "framework/nodes/liveness.h"

namespace fixtop {

bool LacksNode(const FIValue& read) {
    static constexpr std::string_view messages[] = {kNodeDeletedText, kNodeInvalidText,
                                                    kNothingToRead};
    return read.IsText() && std::ranges::count(messages, read.CStr()) != 0;
}

double ToRealOrNan(const FIValue& read) {
    double scanned = 0;
    const bool is_number =
        read.IsText() ? std::sscanf(read.CStr(), "%lg", &scanned) == 1 : !read.IsNull();
    return is_number ? read.AsDouble() : std::numeric_limits<double>::quiet_NaN();
}

}  // namespace fixtop
