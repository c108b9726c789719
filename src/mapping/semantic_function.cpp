#include "mapping/semantic_function.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/names.h"

namespace {

constexpr std::string_view kSemanticPrefix = "CT";
constexpr std::string_view kRootFunction = "Find1";
constexpr std::array<std::string_view, 2> kTopNodeFunctions = {"GetTopHovexEntry",
                                                               "GetTopFIEntryV"};

// The loader finds much more by the handle of this module than what maps may call.
bool IsOwn(ModuleHandle module) {
    return !ProcessModules().Offers(kOwnModule) && module == FindLoadedModule(kOwnModule);
}

}  // namespace

ModuleHandle FindLinkedModule(const std::string& name) {
    const bool linked = ProcessModules().Offers(name.c_str()) || SameName(name, kOwnModule);
    return linked ? LoadModule(name.c_str()) : nullptr;
}

void* FindSemanticFunction(ModuleHandle module, const std::string& name) {
    const bool semantic = name.starts_with(kSemanticPrefix) || name == kRootFunction;
    if (!semantic && IsOwn(module)) return nullptr;
    return FindFunction(module, name.c_str());
}

void* FindTopNodeFunction(ModuleHandle module, const std::string& name) {
    const bool top = std::find(kTopNodeFunctions.begin(), kTopNodeFunctions.end(), name) !=
                     kTopNodeFunctions.end();
    if (!top && IsOwn(module)) return nullptr;
    return FindFunction(module, name.c_str());
}
