// SPDX-License-Identifier: Apache-2.0
#include "shell_line.h"

#include "case_session.h"
#include "word.h"

namespace fixtop {

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

struct Cut {
    std::vector<ShellWord> words;
    char open_quote = '\0';  // the one that is not closed
    bool in_word = false;    // the line ends inside its last word
};

Cut CutLine(const std::string& line) {
    Cut cut;
    char& quote = cut.open_quote;
    for (std::size_t at = 0; at < line.size(); ++at) {
        const char c = line[at];
        if (!quote && IsBlank(c)) {
            cut.in_word = false;
            continue;
        }
        if (!cut.in_word) cut.words.push_back({"", at});
        cut.in_word = true;
        const bool is_quote = quote ? c == quote : c == '"' || c == '\'';
        if (is_quote) quote = quote ? '\0' : c;
        if (!is_quote || c == '"') cut.words.back().text += c;
    }
    return cut;
}

// The last dot or parenthesis of a path that stands outside quotes and brackets; npos without one.
std::size_t LastJoint(const std::string& path) {
    std::size_t joint = std::string::npos;
    bool quoted = false;
    int brackets = 0;
    for (std::size_t at = 0; at < path.size(); ++at) {
        const char c = path[at];
        if (c == '"') quoted = !quoted;
        if (quoted) continue;
        brackets += (c == '[') - (c == ']');
        if (brackets == 0 && (c == '.' || c == '(')) joint = at;
    }
    return joint;
}

// A name or key of a path as it is typed at the prompt: in quotes also when it has a blank.
std::string AtPrompt(std::string quoted) {
    const bool is_word = quoted.find_first_of(" \t") == std::string::npos;
    return is_word || quoted.front() == '"' ? quoted : '"' + quoted + '"';
}

std::string Typed(const client::Child& child) {
    const std::string name = client::WrittenName(child.name);
    if (!child.step.starts_with(name)) return child.step;
    const std::string rest = child.step.substr(name.size());
    if (!rest.starts_with('(')) return AtPrompt(name) + rest;
    return AtPrompt(name) + '(' + AtPrompt(rest.substr(1, rest.size() - 2)) + ')';
}

bool BeginsWith(const std::string& name, const std::string& beginning) {
    return name.compare(0, beginning.size(), beginning) == 0;
}

// As they are typed.
std::vector<std::string> AttributeNames(const Node& node, const std::string& typed) {
    const std::string beginning = FromOneLine(typed);
    std::vector<std::string> names;
    for (const auto& attribute : node.Attributes()) {
        if (BeginsWith(attribute.first, beginning)) names.push_back(OneLine(attribute.first));
    }
    return names;
}

// The next word after those of a group, or after none.
std::vector<std::string> WordNames(const std::vector<ShellWord>& words,
                                   const std::string& beginning) {
    const std::string group = words.empty() ? "" : words.front().text + ' ';
    std::vector<std::string> names;
    for (const WordRow& row : Words()) {
        if (!IsKnown(row.place, Place::kShell) || !BeginsWith(row.name, group + beginning))
            continue;
        const std::string name = row.name + group.size();
        if (name.find(' ') == std::string::npos) names.push_back(name);
    }
    return names;
}

// The node that a path leads to, as it is typed; null without one.
using Lookup = std::function<std::optional<Node>(const std::string& path)>;

std::vector<std::string> PathCompletions(const Lookup& look_up, const std::string& typed) {
    const std::size_t joint = LastJoint(typed);
    const bool deeper = joint != std::string::npos;
    const std::string parent = deeper ? typed.substr(0, joint) : "";
    std::string beginning = deeper ? typed.substr(joint + 1) : typed;
    const bool attribute = deeper && typed[joint] == '(';
    const auto node = look_up(parent);
    if (!node) return {};
    std::vector<std::string> candidates;
    if (attribute) {
        for (const std::string& name : AttributeNames(*node, beginning)) {
            candidates.push_back(parent + '(' + name + ')');
        }
        return candidates;
    }
    if (!beginning.empty() && beginning.front() == '"') beginning.erase(0, 1);
    beginning = FromOneLine(beginning);
    ForEachChild(*node, [&](const client::Child& child) {
        if (!BeginsWith(child.name, beginning)) return true;
        candidates.push_back(client::JoinPath(parent, OneLine(Typed(child))));
        return true;
    });
    return candidates;
}

std::optional<Node> Find(CaseSession& session, const std::string& path) {
    std::string problem;
    auto found = Locate(session, FromOneLine(path), problem, Several::kFirst);
    if (!found) return std::nullopt;
    return std::move(found->node);
}

// Columns of a table lead down from its rows, of which the first is asked.
std::optional<Node> FindBelowRow(CaseSession& session, const std::string& pattern,
                                 const std::string& path) try {
    const auto row = Find(session, pattern);
    auto found = row ? row->Find(FromOneLine(path)) : std::nullopt;
    if (!found) return std::nullopt;
    return std::move(found->node);
} catch (const client::PathError&) {
    return std::nullopt;
}

// Names of attributes of the last node that the line names before `--attr`.
std::vector<std::string> OptionCompletions(CaseSession& session,
                                           const std::vector<ShellWord>& words,
                                           const std::string& beginning) {
    for (auto word = words.rbegin(); word != words.rend(); ++word) {
        if (word->text.empty() || word->text.front() == '-') continue;
        if (const auto node = Find(session, word->text)) return AttributeNames(*node, beginning);
    }
    return AttributeNames(session.Here(), beginning);
}

}  // namespace

std::optional<std::vector<ShellWord>> SplitLine(const std::string& line) {
    Cut cut = CutLine(line);
    if (cut.open_quote) return std::nullopt;
    return std::move(cut.words);
}

terminal::Completion CompleteLine(CaseSession& session, const std::string& line) {
    const Cut cut = CutLine(line);
    std::vector<ShellWord> words = cut.words;
    ShellWord last{"", line.size()};
    if (cut.in_word) {
        last = words.back();
        words.pop_back();
        // A word that is held together goes on to be.
        if (cut.open_quote == '\'' && line[last.start] == '\'') ++last.start;
    }
    if (words.size() < 2) {
        const std::vector<std::string> names = WordNames(words, last.text);
        if (words.empty() || !names.empty()) return {last.start, names};
    }
    if (words.back().text == "--attr") {
        return {last.start, OptionCompletions(session, words, last.text)};
    }
    const bool is_column = words.size() > 1 && words.front().text == "table";
    const Lookup look_up = [&](const std::string& path) {
        return is_column ? FindBelowRow(session, words[1].text, path) : Find(session, path);
    };
    return {last.start, PathCompletions(look_up, last.text)};
}

}  // namespace fixtop
