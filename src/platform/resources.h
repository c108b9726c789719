#pragma once

// Data compiled into the module: class library, map and unit files. Names do not distinguish case.

#include <span>
#include <string_view>

struct CompiledResource {
    std::string_view name;
    std::string_view bytes;
};

// Adds rows, which stay where they are for the life of the process; generated tables are registered
// so. The row registered last wins among equal names, and any row over the system's own resources.
void RegisterResources(std::span<const CompiledResource> rows);

// The bytes of a resource, for the life of the module; without one a view of a null pointer.
std::string_view FindCompiledResource(std::string_view name);
