// SPDX-License-Identifier: Apache-2.0
#include "diagnostics/instance_counts.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string>

#include "platform/debug_output.h"

namespace fixtop {

namespace {

struct Row {
    CountGroup group;
    const char* name;
};

constexpr Row kRows[] = {
#define FIXTOP_ROW(group, name) {CountGroup::group, #name},
    FIXTOP_COUNTED_CLASSES(FIXTOP_ROW)
#undef FIXTOP_ROW
};

constexpr int kLargestIndent = 80;

InstanceCount g_counts[std::size(kRows)];

}  // namespace

InstanceCount& CountOf(CountedClass counted) noexcept {
    return g_counts[static_cast<int>(counted)];
}

void ReportInstances(CountGroup group, int indent) {
    const auto blanks = static_cast<std::size_t>(std::clamp(indent, 0, kLargestIndent));
    const std::string margin(blanks, ' ');
    for (std::size_t i = 0; i < std::size(kRows); ++i) {
        if (kRows[i].group != group) continue;
        char line[192];
        std::snprintf(line, sizeof line, " %s %s: count: %d, total: %d\n", margin.c_str(),
                      kRows[i].name, g_counts[i].alive, g_counts[i].total);
        WriteDebugLine(line);
    }
}

}  // namespace fixtop
