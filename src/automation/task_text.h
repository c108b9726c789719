// SPDX-License-Identifier: Apache-2.0
#pragma once

// What members hand out in task memory, held until it is handed out.

#include <memory>

#include "fixtop/value.h"
#include "platform/task_memory.h"

namespace fixtop {

struct TaskMemoryFree {
    void operator()(void* memory) const noexcept { FreeTaskMemory(memory); }
};
using TaskText = std::unique_ptr<char, TaskMemoryFree>;
using TaskReals = std::unique_ptr<double, TaskMemoryFree>;

// Both throw bad_alloc when memory runs out. A value is copied as text; none is null.
TaskText ToTaskText(const FIValue& value);
TaskReals AllocateReals(std::size_t count);

}  // namespace fixtop
