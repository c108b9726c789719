// SPDX-License-Identifier: Apache-2.0
#include "platform/modules.h"

namespace fixtop {

OfferedModules& ProcessModules() {
    static OfferedModules modules(SystemModules());
    return modules;
}

ModuleHandle FindLoadedModule(const char* name) {
    return ProcessModules().FindLoaded(name);
}

ModuleHandle LoadModule(const char* name) {
    return ProcessModules().Load(name);
}

void* FindFunction(ModuleHandle module, const char* name) {
    return ProcessModules().Function(module, name);
}

void UnloadModule(ModuleHandle module) {
    ProcessModules().Unload(module);
}

void OfferModule(const char* name, std::initializer_list<OfferedFunction> functions) {
    ProcessModules().Offer(name, functions);
}

void WithdrawModule(const char* name) {
    ProcessModules().Withdraw(name);
}

}  // namespace fixtop
