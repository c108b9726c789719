// SPDX-License-Identifier: Apache-2.0
#pragma once

// Handles by their paths below a root.

#include <memory>
#include <string>
#include <vector>

#include "lifetimes/subject.h"

namespace fixtop::lifetimes {

// One level of a path: the name, and which of those that have it.
struct Step {
    std::string name;
    int number = 0;
};
using Path = std::vector<Step>;

std::string TextOf(const Path& path);

// Null when the path leads nowhere.
Ref<FIIteratorBase> IteratorAt(const Ref<FIEntry>& root, const Path& path);
Ref<FIEntry> EntryAt(const Ref<FIEntry>& root, const Path& path);
// For kinds of handles on a node.
std::unique_ptr<Subject> MakeSubject(Kind kind, const Ref<FIEntry>& root, const Path& path,
                                     const Access& access);

}  // namespace fixtop::lifetimes
