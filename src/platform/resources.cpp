#include "platform/resources.h"

#include <string>
#include <vector>

#include "platform/names.h"
#include "platform/system_resources.h"

namespace {

std::vector<CompiledResource>& Rows() {
    static std::vector<CompiledResource> rows;
    return rows;
}

}  // namespace

void RegisterResources(std::span<const CompiledResource> rows) {
    Rows().insert(Rows().begin(), rows.begin(), rows.end());
}

std::string_view FindCompiledResource(std::string_view name) {
    for (const CompiledResource& row : Rows()) {
        if (SameName(row.name, name)) return row.bytes;
    }
    return FindSystemResource(std::string(name));
}
