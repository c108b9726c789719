// SPDX-License-Identifier: Apache-2.0
#include "case_check.h"

#include <algorithm>
#include <cstdio>

#include "terminal.h"

namespace fixtop {

namespace {

// A map may lead from an object to itself.
constexpr int kMostLevels = 24;
constexpr int kObjectsPerTold = 64;

// Empty when the node is no object.
std::string ClassOf(const Node& node) {
    constexpr std::string_view kObject = "Object(";
    const std::string type = node.Type();
    if (!type.starts_with(kObject)) return "";
    return type.substr(kObject.size(), type.size() - kObject.size() - 1);
}

void Count(client::Missing missing, const Node& node, std::vector<MissingReason>& reasons) {
    const auto same = std::find_if(reasons.begin(), reasons.end(), [&](const MissingReason& each) {
        return each.missing.absence == missing.absence && each.missing.text == missing.text;
    });
    if (same != reasons.end()) {
        ++same->count;
    } else {
        reasons.push_back({std::move(missing), 1, node.Path()});
    }
}

}  // namespace

void CaseCheck::Walk(const Node& root) {
    Walk(root, 0, 0);
    if (terminal::NotesAreSeen()) std::fprintf(stderr, "\r%32s\r", "");
}

void CaseCheck::Walk(const Node& node, unsigned long long object_above, int depth) {
    if (terminal::IsInterrupted()) throw Interrupted();
    const std::string class_name = ClassOf(node);
    if (class_name.empty() || depth > kMostLevels) return;
    // What stands on the object above, as phases on their stream, is told apart by its place alone.
    const unsigned long long object = client::ObjectNumber(node);
    const bool is_another = object != 0 && object != object_above;
    if (is_another && !seen_.emplace(class_name, object).second) return;
    TellProgress();
    Judge(node, AttributesOf(class_name));
    ForEachChild(node, [&](const client::Child& child) {
        Walk(child.node, object != 0 ? object : object_above, depth + 1);
        return true;
    });
}

void CaseCheck::Judge(const Node& node, Attributes& attributes) const {
    for (auto& [name, attribute] : attributes) {
        ++attribute.instances;
        if (attribute.has_value || !attribute.is_mapped) continue;
        auto missing = client::WhyMissing(node, name);
        if (!missing) continue;
        if (missing->absence == client::Absence::kHasValue) {
            attribute.has_value = true;
        } else if (missing->absence == client::Absence::kUnmapped) {
            attribute.is_mapped = false;
        } else {
            Count(std::move(*missing), node, attribute.reasons);
        }
    }
}

CaseCheck::Attributes& CaseCheck::AttributesOf(const std::string& class_name) {
    const auto [row, is_new] = classes_.try_emplace(class_name);
    Attributes& attributes = row->second;
    if (!is_new) return attributes;
    const auto found = definitions_.Find("Classes." + client::WrittenName(class_name));
    if (!found) return attributes;
    ForEachChild(found->node, [&](const client::Child& child) {
        attributes[child.node.Name()].declared_by = child.node.Attribute("owner").ToText();
        return true;
    });
    return attributes;
}

void CaseCheck::TellProgress() {
    if (++objects_ % kObjectsPerTold != 0 || !terminal::NotesAreSeen()) return;
    std::fprintf(stderr, "\rwalking, object %d", objects_);
}

}  // namespace fixtop
