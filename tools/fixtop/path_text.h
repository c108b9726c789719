#pragma once

// Path expressions as text: cut into their steps, and written so that they lead back to a node.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fixtop {

// One step of a path, cut out of the expression without being evaluated.
struct StepText {
    std::string text;                  // the step as written, with its key and without the dot
    std::string bare;                  // the same without what stands in parentheses
    std::string name;                  // unquoted; empty when the step has none
    bool is_variable = false;          // the name is that of a variable
    std::optional<std::string> count;  // what stands behind `#`
    std::string filters;               // "[...]|[...]" as written
    std::string key;                   // what stands in parentheses before another step
    std::string attribute;             // what stands in the parentheses that end the path

    bool TakesAnyName() const { return name.empty() || name == "*" || is_variable; }
    const std::string& Parentheses() const { return key.empty() ? attribute : key; }
    // The step stays on the node that it is applied to.
    bool Stays() const { return name.empty() && !is_variable && !count; }
};

// Cuts an expression that is known to parse. Parentheses with a step behind them hold the key that
// tells a node from its siblings of the same name.
std::vector<StepText> SplitPath(std::string_view expression);

// The name as it is written in a path, in quotes where it needs them.
std::string QuotedName(const std::string& name);

// The same for a key, which stands in parentheses.
std::string QuotedKey(const std::string& key);

// A text in which names are quoted, without those quotes.
std::string WithoutQuotes(std::string_view text);

// Where a child stands among its siblings.
struct ChildPlace {
    std::string name;       // by which it is sought
    int repeat = 0;         // count of earlier siblings of the same name
    int index = 0;          // count of all earlier siblings
    bool by_index = false;  // no name leads to it
    std::string key = {};   // that no earlier sibling of this name has; empty without one
};

// The step that leads to this child and to no other.
std::string StepFor(const ChildPlace& place);

// `step` behind `path`; either may be empty.
std::string JoinPath(const std::string& path, const std::string& step);

}  // namespace fixtop
