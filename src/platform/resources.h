// SPDX-License-Identifier: Apache-2.0
#pragma once

// Data compiled into the module: class library, map and unit files. Names do not distinguish case.

#include <span>
#include <string_view>

namespace fixtop {

struct CompiledResource {
    std::string_view name;
    std::string_view bytes;
};

// A table of them.
struct CompiledResources {
    constexpr explicit CompiledResources(std::span<const CompiledResource> its_rows) noexcept
        : rows(its_rows) {}

    const std::span<const CompiledResource> rows;
    const CompiledResources* next = nullptr;  // the one that was registered before
};

// Adds a table, which stays where it is for the life of the process, as its rows do; once. The row
// registered last wins among equal names, and any row over the system's own resources. Takes no
// memory, since generated tables are registered before anybody could be told that there is none.
void RegisterResources(CompiledResources& table) noexcept;

// The bytes of a resource, for the life of the module; without one a view of a null pointer.
std::string_view FindCompiledResource(std::string_view name);

}  // namespace fixtop
