// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "platform/module_system.h"

namespace fixtop {

struct OfferedFunction {
    std::string name;
    void* pointer;
};

// The table of offered modules on top of another module system, which must outlive it.
class OfferedModules final : public ModuleSystem {
 public:
    explicit OfferedModules(ModuleSystem& system);
    ~OfferedModules() override;

    ModuleHandle FindLoaded(const char* name) override;
    ModuleHandle Load(const char* name) override;
    void* Function(ModuleHandle module, const char* name) override;
    // An offered module stays until it is withdrawn.
    void Unload(ModuleHandle module) override;

    bool Offers(const char* name) const { return FindOffered(name) != nullptr; }

    // Adds functions to the offered module `name`; one of the same name is replaced.
    void Offer(const char* name, std::initializer_list<OfferedFunction> functions);
    // Takes the offered module out; its handle is no longer valid.
    void Withdraw(const char* name);

 private:
    struct Module;

    Module* FindOffered(const char* name) const;

    ModuleSystem& system_;
    std::vector<std::unique_ptr<Module>> offered_;
};

}  // namespace fixtop
