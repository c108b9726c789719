// SPDX-License-Identifier: Apache-2.0
#pragma once

// The beginnings of host monikers that lead to the fixed nodes of the tree.

#include <cstring>
#include <span>

#include "fixtop/value.h"

namespace fixtop {

struct KeyPrefix {
    const char* prefix;
    // Length of the part of the path that the key stands for.
    std::size_t consumed;
    const char* key;

    // A prefix that the key stands for as a whole.
    constexpr KeyPrefix(const char* text, const char* node)
        : prefix(text), consumed(std::char_traits<char>::length(text)), key(node) {}
    constexpr KeyPrefix(const char* text, std::size_t length, const char* node)
        : prefix(text), consumed(length), key(node) {}
};

// The key of the first prefix that the path begins with, NULL and the whole path otherwise.
inline void FindKeyByPrefix(std::span<const KeyPrefix> prefixes, const char* path, FIValue& out,
                            const char** rest) {
    out.Clear();
    *rest = path;
    for (const KeyPrefix& row : prefixes) {
        if (!path || std::strncmp(path, row.prefix, std::strlen(row.prefix)) != 0) continue;
        out.SetText(row.key);
        *rest = path + row.consumed;
        return;
    }
}

}  // namespace fixtop
