#pragma once

// A class library under a count: every context of a tree holds it, so it ends with the tree.

#include "framework/ref.h"
#include "model/class_library.h"

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

    CCDMClassLibrary library;

 private:
    ~OpenLibrary() = default;

    int references_ = 1;
};
