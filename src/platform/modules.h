// SPDX-License-Identifier: Apache-2.0
#pragma once

// Modules of the process and the functions that they export, by name.
//
// Names are those of the simulator's files, "hovex.exe" or "hovexeng.dll", whatever the platform
// calls a shared library: on POSIX "x.dll" is libx.so. "fixtop.dll" is the module that this code is
// linked into. In front of the system stands a table of offered modules, with which a host that is
// no file of that name gives its functions. Names of modules do not distinguish case, those of
// functions do.
//
// A plain name is sought beside this module before the system's own places; beside means where this
// module lay when it was loaded. A name with a folder must be a full path. No module ever comes out
// of the working directory, also not by a relative folder of the system's search path. Failure is a
// null.

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace fixtop {

using ModuleHandle = void*;

class ModuleSystem {
 public:
    virtual ~ModuleSystem() = default;

    // A module that is in the process already.
    virtual ModuleHandle FindLoaded(const char* name) = 0;
    // The same, loaded when it is not.
    virtual ModuleHandle Load(const char* name) = 0;
    virtual void* Function(ModuleHandle module, const char* name) = 0;
    // Gives back what one Load gave; the module leaves the process with the last of them.
    virtual void Unload(ModuleHandle) {}
};

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

// The system's loader.
ModuleSystem& SystemModules();

// The lookup of this process: offered modules on top of the system's.
OfferedModules& ProcessModules();

ModuleHandle FindLoadedModule(const char* name);
ModuleHandle LoadModule(const char* name);
void* FindFunction(ModuleHandle module, const char* name);
void UnloadModule(ModuleHandle module);
void OfferModule(const char* name, std::initializer_list<OfferedFunction> functions);
void WithdrawModule(const char* name);

}  // namespace fixtop
