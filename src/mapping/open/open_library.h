// SPDX-License-Identifier: Apache-2.0
#pragma once

// A class library under a count: every context of a tree holds it, so it ends with the tree.

#include <set>
#include <string>

#include "fixtop/ref.h"
#include "mapping/nodes/class_way.h"
#include "model/class_library.h"

namespace fixtop {

// Starts at one reference.
class OpenLibrary {
 public:
    explicit OpenLibrary(ModuleHandle unit_resources = nullptr,
                         ModuleHandle class_resources = nullptr)
        : library(unit_resources, class_resources) {}
    OpenLibrary(const OpenLibrary&) = delete;
    OpenLibrary& operator=(const OpenLibrary&) = delete;

    int AddRef() { return ++references_; }
    int Release() {
        const int left = --references_;
        if (left == 0) delete this;
        return left;
    }

    // True once for each text: whether it is not told of this tree yet.
    bool IsNew(const std::string& text) { return told_.insert(text).second; }

    CCDMClassLibrary library;
    ClassWay way;  // of the tree's top

 private:
    ~OpenLibrary() = default;

    std::set<std::string> told_;
    int references_ = 1;
};

}  // namespace fixtop
