// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/function_names.h"

#include <variant>

namespace fixtop {

namespace {

struct KindWords {
    const char* is;
    const char* wanted;
};
constexpr KindWords kWords[] = {
    {"a function to one node, for Type Function", "a function to one node"},
    {"a function of a list, for <TranslateArray Type=\"ArrayFunc\">", "a function of a list"},
    {"a function of a top node, for <TopNode>", "a function of a top node"},
};

template <class Function>
constexpr std::size_t kIndexOf = decltype(NamedFunction::function)(Function()).index();
static_assert(kIndexOf<SemanticFunction> == static_cast<std::size_t>(FunctionKind::kStep));
static_assert(kIndexOf<ArrayFunction> == static_cast<std::size_t>(FunctionKind::kList));
static_assert(kIndexOf<TopNodeFunction> == static_cast<std::size_t>(FunctionKind::kTop));

}  // namespace

std::string WrongFunction(const SemanticModule& module, const std::string& name, FunctionKind kind,
                          Findings& findings) {
    const auto wanted = static_cast<std::size_t>(kind);
    const KindWords* other = nullptr;
    std::vector<std::string> names;
    for (const NamedFunction& row : module.functions) {
        const std::size_t index = row.function.index();
        if (index == wanted) names.emplace_back(row.name);
        if (row.name != name) continue;
        if (index == wanted) return "";
        other = &kWords[index];
    }
    const std::string is =
        other ? std::string("is ") + other->is + "; wanted: " : "is not known; wanted: ";
    return "function " + name + " " + is + kWords[wanted].wanted + findings.Near(name, names);
}

}  // namespace fixtop
