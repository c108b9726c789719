// SPDX-License-Identifier: Apache-2.0
#include "shell_line.h"

#include <algorithm>

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

// What stands on a line behind its word.
struct Arguments {
    std::vector<std::string> positionals;
    std::string option;  // of which the next argument is a value; empty without one
    int value = 0;       // which of its values
};

Arguments Sort(const std::vector<ShellWord>& words, std::size_t first,
               const std::vector<OptionShape>& options) {
    Arguments arguments;
    int values = 0;
    for (std::size_t i = first; i < words.size(); ++i) {
        const std::string& text = words[i].text;
        if (values > 0) {
            ++arguments.value;
            if (--values == 0) arguments.option.clear();
        } else if (text.starts_with("--")) {
            const auto shape = std::ranges::find(options, text, &OptionShape::name);
            values = shape == options.end() ? 0 : shape->values;
            arguments.option = values > 0 ? text : "";
            arguments.value = 0;
        } else {
            arguments.positionals.push_back(text);
        }
    }
    return arguments;
}

std::vector<std::string> OptionNames(const std::vector<OptionShape>& options,
                                     const std::string& beginning) {
    std::vector<std::string> names;
    for (const OptionShape& option : options) {
        if (BeginsWith(option.name, beginning)) names.push_back(option.name);
    }
    return names;
}

// The node that a path leads to, as it is typed; null without one.
using Lookup = std::function<std::optional<Node>(const std::string& path)>;

// A name as it stands in a path, whole.
std::string WithoutQuotes(const std::string& name) {
    if (name.size() < 2 || name.front() != '"' || name.back() != '"') return FromOneLine(name);
    return FromOneLine(name.substr(1, name.size() - 2));
}

// The beginning of one.
std::string WithoutQuote(const std::string& beginning) {
    return FromOneLine(beginning.starts_with('"') ? beginning.substr(1) : beginning);
}

// Steps that begin as "Stream(Raw": the siblings of this name that have keys.
std::vector<std::string> KeyCompletions(const Lookup& look_up, const std::string& list,
                                        const std::string& typed) {
    const std::size_t joint = LastJoint(list);
    const bool deeper = joint != std::string::npos && list[joint] == '.';
    const std::string parent = deeper ? list.substr(0, joint) : "";
    const std::string name = WithoutQuotes(deeper ? list.substr(joint + 1) : list);
    const std::string beginning = WithoutQuote(typed);
    const auto node = look_up(parent);
    if (!node) return {};
    std::vector<std::string> candidates;
    ForEachChild(*node, [&](const client::Child& child) {
        if (child.name != name) return true;
        const std::string key = child.node.Key();
        if (!key.empty() && BeginsWith(key, beginning)) {
            candidates.push_back(client::JoinPath(parent, OneLine(Typed(child))));
        }
        return true;
    });
    return candidates;
}

std::vector<std::string> PathCompletions(const Lookup& look_up, const std::string& typed) {
    const std::size_t joint = LastJoint(typed);
    const bool deeper = joint != std::string::npos;
    const std::string parent = deeper ? typed.substr(0, joint) : "";
    const std::string beginning = deeper ? typed.substr(joint + 1) : typed;
    const bool attribute = deeper && typed[joint] == '(';
    std::vector<std::string> candidates;
    if (attribute) candidates = KeyCompletions(look_up, parent, beginning);
    if (!candidates.empty()) return candidates;
    const auto node = look_up(parent);
    if (!node) return {};
    if (attribute) {
        for (const std::string& name : AttributeNames(*node, beginning)) {
            candidates.push_back(parent + '(' + name + ')');
        }
        return candidates;
    }
    const std::string name = WithoutQuote(beginning);
    ForEachChild(*node, [&](const client::Child& child) {
        if (!BeginsWith(child.name, name)) return true;
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

// Names of attributes of the last node that the line names.
std::vector<std::string> AttributesOf(CaseSession& session, const std::vector<std::string>& paths,
                                      const std::string& beginning) {
    for (auto path = paths.rbegin(); path != paths.rend(); ++path) {
        if (const auto node = Find(session, *path)) return AttributeNames(*node, beginning);
    }
    return AttributeNames(session.Here(), beginning);
}

// Null for none.
const WordRow* RowOf(const std::string& word) {
    const auto row = std::ranges::find(Words(), word, &WordRow::name);
    return row == Words().end() ? nullptr : &*row;
}

// What the help calls the argument that comes behind so many others; empty when there is none. The
// arguments of a word that is not of the shell are not told apart.
std::string ArgumentAt(const std::string& word, const WordShape& shape, std::size_t place) {
    const WordRow* row = RowOf(word);
    if (row && !IsKnown(row->place, Place::kShell)) return "PATH";
    if (place < shape.arguments.size()) return shape.arguments[place];
    return shape.repeats ? shape.arguments.back() : "";
}

// The session in which the paths of a word are looked up when it is not the one at work.
std::unique_ptr<CaseSession> OtherSession(const CaseSession& session, const std::string& word) try {
    const WordRow* row = RowOf(word);
    return row && row->view == View::kNeutral ? session.InNeutralView() : nullptr;
} catch (const client::CaseError&) {
    return nullptr;
}

std::vector<std::string> ArgumentCompletions(CaseSession& session,
                                             const std::vector<ShellWord>& words,
                                             const std::string& typed) {
    std::string word = words[0].text;
    WordShape shape = ShapeOf(word, Place::kShell);
    const bool is_group = words.size() > 1 && shape.options.empty();
    if (is_group) {
        word += ' ' + words[1].text;
        shape = ShapeOf(word, Place::kShell);
    }
    const Arguments before = Sort(words, is_group ? 2 : 1, shape.options);
    if (before.option == "--attr") return AttributesOf(session, before.positionals, typed);
    // Of the other options the one that stores has a path.
    if (!before.option.empty() && (before.option != "--set" || before.value > 0)) return {};
    if (typed.starts_with('-')) return OptionNames(shape.options, typed);
    const std::string argument =
        before.option.empty() ? ArgumentAt(word, shape, before.positionals.size()) : "PATH";
    if (argument == "WORD") return WordNames({}, typed);
    if (argument != "PATH" && argument != "PATTERN" && argument != "EXPR") return {};
    const auto other = OtherSession(session, word);
    CaseSession& asked = other ? *other : session;
    const bool is_column = word == "table" && !before.positionals.empty() && before.option.empty();
    return PathCompletions(
        [&](const std::string& path) {
            return is_column ? FindBelowRow(asked, before.positionals.front(), path)
                             : Find(asked, path);
        },
        typed);
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
    return {last.start, ArgumentCompletions(session, words, last.text)};
}

}  // namespace fixtop
