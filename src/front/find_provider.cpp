// SPDX-License-Identifier: Apache-2.0
#include "front/find_provider.h"

namespace fixtop {

namespace {

ModuleSystem* g_modules = nullptr;

void* Ask(ModuleSystem& modules, ModuleHandle module, const char* name) {
    return module ? modules.Function(module, name) : nullptr;
}

ModuleHandle RunningHost(ModuleSystem& modules) {
    ModuleHandle host = modules.FindLoaded("hovex.exe");
    return host ? host : modules.FindLoaded("rifmos.exe");
}

}  // namespace

void* FindProvider(ModuleSystem& modules, const char* name) {
    if (void* found = Ask(modules, RunningHost(modules), name)) return found;
    if (void* found = Ask(modules, modules.Load("hovexeng.dll"), name)) return found;
    return Ask(modules, modules.Load("fixtop.dll"), name);
}

void* FindProvider(const char* name) {
    return FindProvider(g_modules ? *g_modules : ProcessModules(), name);
}

void SetProviderModules(ModuleSystem* modules) {
    g_modules = modules;
}

}  // namespace fixtop
