// SPDX-License-Identifier: Apache-2.0
#include "diagnostics/seek_table.h"

#include <cstdio>

#include "platform/debug_output.h"

namespace fixtop {

int SeekCount(int row) noexcept {
    return row >= 0 && row < kSeekRows ? g_seeks[row] : 0;
}

void PrintSeekTable() {
    WriteDebugLine(" refcnt   number of seeks with\n");
    for (int row = 0; row < kSeekRows; ++row) {
        char line[64];
        std::snprintf(line, sizeof line, "  %d        %d\n", row, g_seeks[row]);
        WriteDebugLine(line);
    }
}

}  // namespace fixtop
