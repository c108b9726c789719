// SPDX-License-Identifier: Apache-2.0
#include "platform/resources.h"

#include <string>
#include <utility>

#include "platform/names.h"
#include "platform/system_resources.h"

namespace fixtop {

namespace {

constinit const CompiledResources* g_last = nullptr;

}  // namespace

void RegisterResources(CompiledResources& table) noexcept {
    table.next = std::exchange(g_last, &table);
}

std::string_view FindCompiledResource(std::string_view name) {
    for (const CompiledResources* table = g_last; table != nullptr; table = table->next) {
        for (const CompiledResource& row : table->rows) {
            if (SameName(row.name, name)) return row.bytes;
        }
    }
    return FindSystemResource(std::string(name));
}

}  // namespace fixtop
