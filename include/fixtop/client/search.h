// SPDX-License-Identifier: Apache-2.0
#pragma once

// Search: a path expression with wildcards beyond the language of paths. A * within a name is any
// text of it, as in Streams.Raw*.*Temp*, and ** any number of levels: **.Temperature. In quotes,
// and within brackets and parentheses, both are what they are in a path.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "fixtop/client/pattern.h"

namespace fixtop::client {

class Search {
 public:
    // Throws PathError.
    explicit Search(const std::string& expression);
    // The nodes at any level below those of the expression, or of the start when it is empty, whose
    // names the wildcards of `name` match, which has nothing else that means something.
    Search(const std::string& expression, const std::string& name);

    // All nodes, in the order of the tree, to `visit`, until that answers false. What hangs on an
    // attachment is not looked through, nor an object again below itself.
    void ForEach(const Node& from, const std::function<bool(const Place& place)>& visit) const;

 private:
    // One of: steps of a path, a name with wildcards and what follows it in its step, any levels.
    struct Part {
        std::optional<Pattern> path;
        std::string name;
        std::string rest;
        bool is_deep = false;
    };
    class Walk;

    void Take(const std::string& step, std::string& plain);
    void EndPlain(std::string& plain);

    std::vector<Part> parts_;
};

// Whether a text is what a wildcard text stands for, in which * is any text; case counts.
bool IsMatch(const std::string& wildcards, const std::string& text);

}  // namespace fixtop::client
