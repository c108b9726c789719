// SPDX-License-Identifier: Apache-2.0
#include "automation/task_text.h"

#include <new>

namespace fixtop {

TaskText ToTaskText(const FIValue& value) {
    TaskText text(CopyToTaskMemory(value.ToText()));
    if (!text) throw std::bad_alloc();
    return text;
}

TaskReals AllocateReals(std::size_t count) {
    TaskReals reals(static_cast<double*>(AllocateTaskMemory(count * sizeof(double))));
    if (!reals) throw std::bad_alloc();
    return reals;
}

}  // namespace fixtop
