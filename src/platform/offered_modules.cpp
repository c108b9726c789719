// SPDX-License-Identifier: Apache-2.0
#include "platform/offered_modules.h"

#include <algorithm>

#include "platform/names.h"

namespace fixtop {

struct OfferedModules::Module {
    std::string name;
    std::vector<OfferedFunction> functions;
};

OfferedModules::OfferedModules(ModuleSystem& system) : system_(system) {}
OfferedModules::~OfferedModules() = default;

OfferedModules::Module* OfferedModules::FindOffered(const char* name) const {
    for (const auto& module : offered_) {
        if (SameName(module->name, name)) return module.get();
    }
    return nullptr;
}

ModuleHandle OfferedModules::FindLoaded(const char* name) {
    Module* module = FindOffered(name);
    return module != nullptr ? module : system_.FindLoaded(name);
}

ModuleHandle OfferedModules::Load(const char* name) {
    Module* module = FindOffered(name);
    return module != nullptr ? module : system_.Load(name);
}

void* OfferedModules::Function(ModuleHandle module, const char* name) {
    if (module == nullptr) return nullptr;
    for (const auto& offered : offered_) {
        if (offered.get() != module) continue;
        for (const OfferedFunction& function : offered->functions) {
            if (function.name == name) return function.pointer;
        }
        return nullptr;
    }
    return system_.Function(module, name);
}

void OfferedModules::Unload(ModuleHandle module) {
    const auto is_module = [&](const auto& offered) { return offered.get() == module; };
    if (module == nullptr || std::any_of(offered_.begin(), offered_.end(), is_module)) return;
    system_.Unload(module);
}

void OfferedModules::Offer(const char* name, std::initializer_list<OfferedFunction> functions) {
    Module* module = FindOffered(name);
    if (module == nullptr) {
        offered_.push_back(std::make_unique<Module>(Module{name, {}}));
        module = offered_.back().get();
    }
    for (const OfferedFunction& function : functions) {
        std::erase_if(module->functions,
                      [&](const OfferedFunction& former) { return former.name == function.name; });
        module->functions.push_back(function);
    }
}

void OfferedModules::Withdraw(const char* name) {
    std::erase_if(offered_, [&](const auto& module) { return SameName(module->name, name); });
}

}  // namespace fixtop
