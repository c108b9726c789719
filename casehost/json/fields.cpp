// SPDX-License-Identifier: Apache-2.0
#include "json/fields.h"

#include <algorithm>
#include <cmath>

#include "casehost/units.h"

namespace fixtop::casehost::json {

bool Expect(Tree& tree, const JsonNode& node, JsonNode::Kind kind, const char* what) {
    if (node.kind == kind) return true;
    tree.Report(node, std::string("expected ") + what + ", found " + Tree::Describe(node));
    return false;
}

std::string TextOf(Tree& tree, const JsonNode& node) {
    return Expect(tree, node, JsonNode::Kind::text, "a text") ? std::string(node.text)
                                                              : std::string();
}

double NumberOf(Tree& tree, const JsonNode& node) {
    return Expect(tree, node, JsonNode::Kind::number, "a number") ? node.number : kEmpty;
}

std::size_t WordOf(Tree& tree, const JsonNode& node, std::span<const std::string_view> words) {
    if (!Expect(tree, node, JsonNode::Kind::text, "a text")) return 0;
    const auto found = std::find(words.begin(), words.end(), node.text);
    if (found != words.end() && !node.text.empty())
        return static_cast<std::size_t>(found - words.begin());
    tree.Report(node, Tree::Describe(node) + " is none of " + Listed(words));
    return 0;
}

const JsonNode* Fields::Find(std::string_view name) {
    const JsonNode* found = node_.Find(name);
    if (found) found->asked = true;
    return found;
}

std::string Fields::RequiredText(std::string_view name) {
    const JsonNode* found = Find(name);
    if (!found) {
        tree_.Report(node_, "\"" + std::string(name) + "\" is missing");
        return std::string();
    }
    std::string text = TextOf(tree_, *found);
    if (found->kind == JsonNode::Kind::text && text.empty())
        tree_.Report(*found, "must not be empty");
    return text;
}

std::string Fields::Quantity(std::string_view name) {
    const JsonNode* found = Find(name);
    if (!found) return std::string();
    std::string text = TextOf(tree_, *found);
    if (!text.empty() && !FindQuantity(text)) {
        tree_.Report(*found, "no such quantity: " + Tree::Describe(*found));
    }
    return text;
}

bool Fields::Flag(std::string_view name, bool otherwise) {
    const JsonNode* found = Find(name, JsonNode::Kind::boolean, "true or false");
    return found ? found->flag : otherwise;
}

double Fields::Number(std::string_view name) {
    const JsonNode* found = Find(name);
    return found && found->kind != JsonNode::Kind::null ? NumberOf(tree_, *found) : kEmpty;
}

long Fields::Integer(std::string_view name, long otherwise, long minimum, long maximum) {
    const JsonNode* found = Find(name, JsonNode::Kind::number, "a number");
    if (!found) return otherwise;
    const double number = found->number;
    if (std::floor(number) == number && number >= static_cast<double>(minimum) &&
        number <= static_cast<double>(maximum)) {
        return static_cast<long>(number);
    }
    tree_.Report(*found, "expected a whole number from " + std::to_string(minimum) + " to " +
                             std::to_string(maximum));
    return otherwise;
}

void Fields::Done() {
    for (const JsonNode* member = node_.kind == JsonNode::Kind::object ? node_.first : nullptr;
         member; member = member->next) {
        if (member->asked) continue;
        tree_.Report(*member, "unknown member \"" + std::string(member->key) + "\"");
    }
}

}  // namespace fixtop::casehost::json
