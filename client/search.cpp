// SPDX-License-Identifier: Apache-2.0
#include "fixtop/client/search.h"

#include <utility>

#include "fixtop/client/node.h"

namespace fixtop::client {

namespace {

constexpr char kDeep[] = "**";
// A view may lead from an object to itself.
constexpr int kMostLevels = 24;

// The steps of an expression, which dots outside of quotes, brackets and parentheses part.
std::vector<std::string> StepsOf(const std::string& expression) {
    std::vector<std::string> steps(1);
    bool quoted = false;
    int depth = 0;
    for (const char c : expression) {
        if (c == '"') quoted = !quoted;
        if (!quoted) depth += (c == '[' || c == '(') - (c == ']' || c == ')');
        if (c == '.' && !quoted && depth <= 0) {
            steps.emplace_back();
        } else {
            steps.back() += c;
        }
    }
    return steps;
}

}  // namespace

Search::Search(const std::string& expression) {
    std::string plain;
    for (const std::string& step : StepsOf(expression)) Take(step, plain);
    EndPlain(plain);
}

Search::Search(const std::string& expression, const std::string& name) {
    if (!expression.empty()) *this = Search(expression);
    parts_.push_back({std::nullopt, "", "", true});
    parts_.push_back({std::nullopt, name, "", false});
}

void Search::Take(const std::string& step, std::string& plain) {
    const std::string name = step.substr(0, step.find_first_of("[(#\"&|!"));
    const bool is_path = name == "*" || name.find('*') == std::string::npos;
    if (is_path) {
        plain = JoinPath(plain, step);
        return;
    }
    EndPlain(plain);
    const bool is_deep = step == kDeep;
    // Twice any levels are any levels.
    if (is_deep && !parts_.empty() && parts_.back().is_deep) return;
    parts_.push_back(is_deep ? Part{std::nullopt, "", "", true}
                             : Part{std::nullopt, name, step.substr(name.size()), false});
}

void Search::EndPlain(std::string& plain) {
    if (plain.empty()) return;
    parts_.push_back({Pattern(plain), "", "", false});
    plain.clear();
}

class Search::Walk {
 public:
    using Visit = std::function<bool(const Place& place)>;
    Walk(const std::vector<Part>& parts, const Visit& visit) : parts_(parts), visit_(visit) {}

    // False when the visits are to end.
    bool Go(const Place& at, std::size_t part) const {
        if (part == parts_.size()) return visit_(at);
        const Part& next = parts_[part];
        if (next.path) return Follow(*next.path, at, part);
        return next.is_deep ? GoDown(at, part, kMostLevels) : ByName(at, part);
    }

 private:
    bool Follow(const Pattern& path, const Place& from, std::size_t part) const {
        bool more = true;
        path.ForEachBelow(from.node, [&](const Place& place) {
            return more =
                       Go({place.node, place.attribute, JoinPath(from.path, place.path)}, part + 1);
        });
        return more;
    }
    bool ByName(const Place& at, std::size_t part) const {
        const Part& next = parts_[part];
        bool more = true;
        at.node.ForEachChild([&](const Child& child) {
            if (!IsMatch(next.name, child.name)) return true;
            more = next.rest.empty() ? Go(Below(at, child), part + 1)
                                     : Follow(Pattern(child.step + next.rest), at, part);
            return more;
        });
        return more;
    }
    // Every level, this one first.
    bool GoDown(const Place& at, std::size_t part, int levels_left) const {
        const bool is_shut = levels_left == 0 || IsAttached(at.node, levels_left);
        const bool is_end = part + 1 == parts_.size();
        if ((is_end || !is_shut) && !Go(at, part + 1)) return false;
        if (is_shut) return true;
        bool more = true;
        at.node.ForEachChild([&](const Child& child) {
            return more = GoDown(Below(at, child), part, levels_left - 1);
        });
        return more;
    }
    // The node where the levels begin was sought itself.
    static bool IsAttached(const Node& node, int levels_left) {
        return levels_left < kMostLevels && node.Type() == "Attachment";
    }
    static Place Below(const Place& at, const Child& child) {
        return {child.node, "", JoinPath(at.path, child.step)};
    }

    const std::vector<Part>& parts_;
    const Visit& visit_;
};

void Search::ForEach(const Node& from, const std::function<bool(const Place& place)>& visit) const {
    Walk(parts_, visit).Go({from, "", from.Path()}, 0);
}

bool IsMatch(const std::string& wildcards, const std::string& text) {
    std::size_t at = 0;
    std::size_t in_text = 0;
    std::size_t star = std::string::npos;
    std::size_t behind_star = 0;
    while (in_text < text.size()) {
        if (at < wildcards.size() && wildcards[at] == '*') {
            star = at++;
            behind_star = in_text;
        } else if (at < wildcards.size() && wildcards[at] == text[in_text]) {
            ++at;
            ++in_text;
        } else if (star != std::string::npos) {
            at = star + 1;
            in_text = ++behind_star;
        } else {
            return false;
        }
    }
    return wildcards.find_first_not_of('*', at) == std::string::npos;
}

}  // namespace fixtop::client
