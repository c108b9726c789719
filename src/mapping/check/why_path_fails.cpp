// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/why_path_fails.h"

#include "fixtop/near_names.h"
#include "framework/path/child_steps.h"
#include "framework/path/path_match.h"
#include "mapping/check/listed_names.h"

namespace fixtop {

namespace {

// A variable stands for its value.
std::string NameOfStep(const PathEnd& end) {
    FIValue value;
    const bool is_variable = end.step.starts_with('%');
    if (is_variable && end.node->GetVarText(end.name.c_str(), value)) return value.ToText();
    return end.name;
}

std::string NearChildren(FIIterator& node, const std::string& wanted) {
    return Listed("; near: ", NearNames(wanted, NamesOfChildren(node)));
}

}  // namespace

std::string WhyPathFails(const std::string& text, FIReference& from) {
    std::string told = "path " + text + " leads nowhere";
    FIValue source;
    source.SetText(text);
    const PreparedPath path(source);
    if (!path.Error().IsNull()) return path.Error().ToText();
    const Ref<FIReference> start = from.UnboundCopy();
    if (!start) return told;
    const PathEnd end = EndOf(static_cast<FIIterator&>(*start->GetIterator()), path);
    const std::string name = NameOfStep(end);
    const std::string value = name == end.name ? "" : " (" + name + ")";
    return told +
           (end.found.empty() ? "; nothing of it was found"
                              : "; found: " + end.found + ", then no " + end.step + value) +
           NearChildren(*end.node, name);
}

}  // namespace fixtop
