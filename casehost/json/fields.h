// SPDX-License-Identifier: Apache-2.0
#pragma once

// Typed access to the members of a JSON object, with a problem for whatever is not as expected.

#include <functional>
#include <span>
#include <vector>

#include "json/json_tree.h"

namespace fixtop::casehost::json {

// False and a problem "expected .., found .." when the node is of another kind.
bool Expect(Tree& tree, const JsonNode& node, JsonNode::Kind kind, const char* what);
// The empty text, the empty number and 0 when the node is of another kind.
std::string TextOf(Tree& tree, const JsonNode& node);
double NumberOf(Tree& tree, const JsonNode& node);
// "a, b, c" of the names that aren't empty.
template <class Names, class Name = std::identity>
std::string Listed(const Names& names, Name name = {}) {
    std::string all;
    for (const auto& each : names) {
        const std::string_view next = std::invoke(name, each);
        if (!next.empty()) (all += all.empty() ? "" : ", ") += next;
    }
    return all;
}
// Ordinal of one of the words.
std::size_t WordOf(Tree& tree, const JsonNode& node, std::span<const std::string_view> words);

// The elements of an array or the members of an object, each as `read` makes it of (tree, node);
// none when the node is null.
template <class Read>
auto ReadAll(Tree& tree, const JsonNode* list, Read read) {
    std::vector<decltype(read(tree, *list))> items;
    for (const JsonNode* each = list ? list->first : nullptr; each && !tree.Full();
         each = each->next) {
        items.push_back(read(tree, *each));
    }
    return items;
}

class Fields {
 public:
    // A node that is no object is reported and has no members.
    Fields(Tree& tree, const JsonNode& node) : tree_(tree), node_(node) {
        Expect(tree, node, JsonNode::Kind::object, "an object");
    }

    // Null when absent; so are members of a wrong kind, which are reported.
    const JsonNode* Find(std::string_view name);
    const JsonNode* Object(std::string_view name) {
        return Find(name, JsonNode::Kind::object, "an object");
    }
    const JsonNode* Array(std::string_view name) {
        return Find(name, JsonNode::Kind::array, "an array");
    }

    std::string Text(std::string_view name) {
        const JsonNode* found = Find(name);
        return found ? TextOf(tree_, *found) : std::string();
    }
    // Absent or empty is reported.
    std::string RequiredText(std::string_view name);
    // A text that names a quantity of units.h, or is empty.
    std::string Quantity(std::string_view name);
    bool Flag(std::string_view name, bool otherwise);
    // null and absent are the empty number.
    double Number(std::string_view name);
    long Integer(std::string_view name, long otherwise, long minimum = -1'000'000'000,
                 long maximum = 1'000'000'000);
    template <class Word>
    Word OneOf(std::string_view name, std::span<const std::string_view> words, Word otherwise) {
        const JsonNode* found = Find(name);
        return found ? static_cast<Word>(WordOf(tree_, *found, words)) : otherwise;
    }

    // Reports every member that nobody asked for.
    void Done();

 private:
    const JsonNode* Find(std::string_view name, JsonNode::Kind kind, const char* what) {
        const JsonNode* found = Find(name);
        return found && Expect(tree_, *found, kind, what) ? found : nullptr;
    }

    Tree& tree_;
    const JsonNode& node_;
};

}  // namespace fixtop::casehost::json
