// SPDX-License-Identifier: Apache-2.0
#include "mapping/translators/semantic_modules.h"

#include <algorithm>
#include <list>

#include "platform/names.h"

namespace fixtop {

namespace {

// A list, since libraries point to its elements.
std::list<SemanticModule>& Offered() {
    static std::list<SemanticModule> modules;
    return modules;
}

}  // namespace

void OfferSemanticModule(const char* name, std::span<const NamedFunction> functions) {
    WithdrawSemanticModule(name);
    Offered().push_back({name, functions});
}

void WithdrawSemanticModule(const char* name) {
    Offered().remove_if([&](const SemanticModule& module) { return SameName(module.name, name); });
}

const SemanticModule* FindSemanticModule(const std::string& name) {
    const auto found =
        std::find_if(Offered().begin(), Offered().end(),
                     [&](const SemanticModule& module) { return SameName(module.name, name); });
    return found == Offered().end() ? nullptr : &*found;
}

}  // namespace fixtop
