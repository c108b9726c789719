// SPDX-License-Identifier: Apache-2.0
#pragma once

// JsonTree: a JSON text as nodes that know where they stand. Readers walk it with typed accessors
// that record a problem, with file, line and JSON path, and answer a harmless value.
//
// Bounds: depth, number of nodes, and one name or element only once per object; NaN and Infinity
// are no JSON numbers and a number too large for a double is refused.

#include <deque>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "casehost/case_data.h"

namespace fixtop::casehost::json {

inline constexpr int kMaxDepth = 64;
inline constexpr std::size_t kMaxNodes = 50'000'000;
inline constexpr std::size_t kMaxProblems = 20;

struct JsonNode {
    enum class Kind : std::uint8_t { null, boolean, number, text, array, object };

    Kind kind = Kind::null;
    bool flag = false;
    mutable bool asked = false;  // a reader has looked at this member
    std::size_t offset = 0;      // in the text, just behind the node's beginning
    std::string_view key;        // inside an object
    std::string_view text;       // of a text
    double number = 0;
    JsonNode* parent = nullptr;
    JsonNode* first = nullptr;
    JsonNode* last = nullptr;
    JsonNode* next = nullptr;

    // The member of an object, null when there is none.
    const JsonNode* Find(std::string_view name) const;
    std::size_t Count() const;
};

// The node, or where there is none one that stands nowhere.
const JsonNode& OrNowhere(const JsonNode* node);

class Tree {
 public:
    // `file` stands in messages.
    Tree(std::string file, std::string_view text);
    // Without nodes of its own, for what reads those of a JsonStream: keeps the first problem only,
    // and that without a place.
    Tree() : most_problems_(1) {}
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

    // Null when the text is no JSON or exceeds a bound; the problems say why.
    const JsonNode* Root() const { return problems_.empty() ? root_ : nullptr; }
    const std::vector<CaseProblem>& Problems() const { return problems_; }

    // "file:line: /path: message"; only the first kMaxProblems are kept.
    void Report(const JsonNode& at, const std::string& message) {
        ReportAt(at.offset, PathOf(at), message);
    }
    bool Full() const { return problems_.size() >= most_problems_; }
    // "a number", "\"abc\"", "an object" and so on.
    static std::string Describe(const JsonNode& node);

 private:
    friend class TreeBuilder;

    void ReportAt(std::size_t offset, const std::string& path, const std::string& message);
    std::size_t LineOf(std::size_t offset) const;
    static std::string PathOf(const JsonNode& node);

    std::string file_;
    std::string_view text_;
    std::size_t most_problems_ = kMaxProblems;
    std::deque<JsonNode> nodes_;
    std::unordered_set<std::string> texts_;
    const JsonNode* root_ = nullptr;
    std::vector<CaseProblem> problems_;
};

}  // namespace fixtop::casehost::json
