// SPDX-License-Identifier: Apache-2.0
#include "platform/system_resources.h"

#include "platform/windows/own_module.h"

namespace fixtop {

std::string_view FindSystemResource(const std::string& name) {
    const HMODULE module = OwnModule();
    const HRSRC found = FindResourceA(module, name.c_str(), "XML_FILE");
    if (found == nullptr) return {};
    const HGLOBAL loaded = LoadResource(module, found);
    const void* bytes = loaded == nullptr ? nullptr : LockResource(loaded);
    if (bytes == nullptr) return {};
    return {static_cast<const char*>(bytes), SizeofResource(module, found)};
}

}  // namespace fixtop
