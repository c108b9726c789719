// SPDX-License-Identifier: Apache-2.0
#pragma once

// Words: the commands of the program and of its shell. A word declares its options once, for the
// parser and for the help, and runs on an open case.

#include <memory>
#include <span>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "exit_code.h"
#include "output.h"

namespace fixtop {

class CaseSession;

// What a word has at hand while it runs.
struct CommandContext {
    Output& out;
    CaseSession* session = nullptr;  // null for words that need no case
    bool leave_shell = false;        // set by the word that ends the shell
};

class Word {
 public:
    virtual ~Word() = default;
    // What comes before the case on the line.
    virtual void DeclareFirst(CLI::App&) {}
    // The options are read into the word itself.
    virtual void Declare(CLI::App& app) = 0;
    virtual ExitCode Run(CommandContext& around) = 0;
    // The records of its run say themselves what made it end with kFailed.
    virtual bool TellsFailures() const { return false; }
};

// Where a word is known.
enum class Place { kProgram = 1, kShell = 2, kBoth = 3 };
constexpr bool IsKnown(Place word, Place here) {
    return (static_cast<int>(word) & static_cast<int>(here)) != 0;
}

// Which views of a case a word can show. The words with a set of units have an option --units of
// their own for it: those with tables of the neutral view, and kEitherInUnits. A selection says
// itself of which view its nodes are.
enum class View { kNone, kRaw, kEither, kEitherInUnits, kNeutral, kNeutralTables, kOfSelection };

// A row without a maker is a group: the words of the rows whose names begin with its own.
struct WordRow {
    const char* name;  // of a word of a group: both, with a blank between
    const char* summary;
    const char* details;  // below the options in the help
    View view;            // of the case that it takes; kNone when it takes none
    Place place;
    std::unique_ptr<Word> (*make)();
};

std::span<const WordRow> Words();

// Parses a command line, without the program's own name, and runs its word. In the shell the
// session is given and words take no case. Problems are told on `around.out`, and where the line
// asks for JSON in a last record too: error, exit.
ExitCode Execute(std::vector<std::string> arguments, Place place, CommandContext& around);

// An option of a word as it is typed, and how many values stand behind it.
struct OptionShape {
    std::string name;
    int values = 0;
};
// What may stand behind a word.
struct WordShape {
    std::vector<OptionShape> options;
    std::vector<std::string> arguments;  // by position, as the help calls them
    bool repeats = false;                // the last of them may stand several times
};
// Without anything for a group, and for a word that is not known there.
WordShape ShapeOf(const std::string& word, Place place);

// Options; `name` without dashes is an argument by its position. What is said by a path or a name
// is read as output writes it on one line, a text as it stands.
CLI::Option* AddName(CLI::App& app, const char* name, std::string& text, const char* help);
CLI::Option* AddNames(CLI::App& app, const char* name, std::vector<std::string>& texts,
                      const char* help);
CLI::Option* AddText(CLI::App& app, const char* name, std::string& text, const char* help);
// The name of a file; an empty one is refused.
CLI::Option* AddFile(CLI::App& app, const char* name, std::string& file, const char* help);
void AddJson(CLI::App& app, bool& json);
// Which is meant of several nodes that a path leads to: the first, or all of them.
void AddSeveral(CLI::App& app, bool& first, bool& all);

// An argument as it was given, for options that are declared otherwise.
std::string GivenText(std::string argument);
// The same, read as a path or a name.
std::string GivenName(std::string argument);

}  // namespace fixtop
