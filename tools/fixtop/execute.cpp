// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "case_session.h"
#include "fixtop/client/near_names.h"
#include "fixtop/fixtop.h"
#include "line_text.h"
#include "memory.h"
#include "word.h"

namespace fixtop {

namespace {

// The parser takes "[...]" in a list of arguments for a list of its own; a path may look like that.
constexpr char kGuard = '\x01';

void Guard(std::vector<std::string>& arguments) {
    for (std::string& argument : arguments) {
        const bool is_list = !argument.empty() && argument.front() == '[';
        const bool has_guard = !argument.empty() && argument.front() == kGuard;
        if (is_list || has_guard) argument.insert(0, 1, kGuard);
    }
}

constexpr char kVersionOption[] = "--version";

std::string VersionLine() {
    return std::string("fixtop ") + FixtopVersion();
}

std::string WithoutLineEnds(std::string text) {
    while (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
}

// The line may be one that does not parse.
bool AsksForJson(const std::vector<std::string>& arguments) {
    const auto end = std::ranges::find(arguments, "--");
    return std::find(arguments.begin(), end, "--json") != end;
}

// Remembers what is noted, and passes everything on.
class NoteKeeper final : public RecordingOutput {
 public:
    using RecordingOutput::RecordingOutput;
    void Data(std::string_view text) override { Next().Data(text); }
};

std::string ErrorRecord(const std::string& problem, ExitCode code) {
    Json record;
    record["error"] = WithoutLineEnds(problem);
    record["exit"] = static_cast<int>(code);
    return ToLine(record);
}

// Parser and words of one command line.
class CommandLine {
 public:
    explicit CommandLine(Place place) : place_(place) {
        if (place == Place::kProgram) {
            app_.name("fixtop");
            app_.set_version_flag(kVersionOption, VersionLine());
        } else {
            app_.name("");
        }
        app_.allow_windows_style_options(false);
        app_.require_subcommand(1);
        app_.footer(kNotes);
        for (const WordRow& row : Words()) {
            if (IsKnown(row.place, place)) Add(row);
        }
    }

    ExitCode Run(std::vector<std::string> arguments, CommandContext& around) {
        if (!AsksForJson(arguments)) return Follow(std::move(arguments), around);
        const int before = MemoryFailures();
        NoteKeeper notes(around.out);
        CommandContext kept{notes, around.session};
        ExitCode code = ExitCode::kFailed;
        try {
            code = Follow(std::move(arguments), kept);
        } catch (const client::Error& error) {
            if (MemoryFailures() == before) around.out.Line(ErrorRecord(error.what(), code));
            throw;
        }
        const std::string& problem = problem_.empty() ? notes.Recorded() : problem_;
        const bool is_told =
            code == ExitCode::kOk || (code == ExitCode::kFailed && tells_failures_);
        if (!is_told && !problem.empty() && MemoryFailures() == before) {
            around.out.Line(ErrorRecord(problem, code));
        }
        return code;
    }

    WordShape ShapeOf(const std::string& word) {
        const auto at = RowOf(word);
        if (at == rows_.end() || !(*at)->make) return {};
        const std::size_t blank = word.find(' ');
        CLI::App* sub = app_.get_subcommand(word.substr(0, blank));
        if (blank != std::string::npos) sub = sub->get_subcommand(word.substr(blank + 1));
        WordShape shape;
        for (const CLI::Option* option : sub->get_options()) {
            const int most = option->get_expected_max();
            if (option->get_positional()) {
                shape.arguments.push_back(option->get_name(true));
                shape.repeats = most > 1;
            }
            for (const std::string& name : option->get_lnames()) {
                shape.options.push_back({"--" + name, most == 0 ? 0 : option->get_type_size_max()});
            }
        }
        return shape;
    }

 private:
    ExitCode Follow(std::vector<std::string> arguments, CommandContext& around) {
        if (const std::string unknown = UnknownWord(arguments); !unknown.empty()) {
            return Refuse(unknown, around.out);
        }
        try {
            Guard(arguments);
            std::reverse(arguments.begin(), arguments.end());
            app_.parse(std::move(arguments));
        } catch (const CLI::CallForVersion& version) {
            around.out.Line(version.what());
            return ExitCode::kOk;
        } catch (const CLI::CallForHelp&) {
            around.out.Line(WithoutLineEnds(Chosen().help(Prefix())));
            return ExitCode::kOk;
        } catch (const CLI::ParseError& error) {
            return Refuse(error.what(), around.out);
        } catch (const client::PathError& error) {
            around.out.Note(MessageOf(error));
            return ExitCode::kFailed;
        }
        return RunWord(around);
    }

    static constexpr const char* kNotes =
        "A CASE is a file (.json, .dwxmz) or the word demo. A PATH leads down from the top node "
        "in\n"
        "steps with dots: appModel.FlowSheetObjects.Streams.\"Feed 1\".Temperature\n"
        "In names and texts a control character is written \\n, \\r, \\t or \\x1b (its bytes), and "
        "a\n"
        "backslash that would read so \\x5c; paths and names in arguments are read alike.\n"
        "Data goes to standard output, messages to standard error; with --json a failure is told "
        "in\n"
        "a record of standard output too: error, exit. Exit status: 0 done, 1 a path,\n"
        "store or solve failed or the output can't be written, 2 wrong command line, 3 the case "
        "can't\n"
        "be read or written, or memory ran out.";

    void Add(const WordRow& row) {
        const std::string name = row.name;
        const std::size_t blank = name.find(' ');
        CLI::App& above =
            blank == std::string::npos ? app_ : *app_.get_subcommand(name.substr(0, blank));
        CLI::App* sub = above.add_subcommand(name.substr(blank + 1), row.summary);
        sub->footer(row.details);
        rows_.push_back(&row);
        words_.push_back(row.make ? row.make() : nullptr);
        if (!row.make) {
            sub->require_subcommand(1);
            return;
        }
        words_.back()->DeclareFirst(*sub);
        if (place_ == Place::kProgram) AddCase(row, *sub);
        words_.back()->Declare(*sub);
    }
    void AddCase(const WordRow& row, CLI::App& sub) {
        if (row.view == View::kNone) return;
        AddText(sub, "CASE", case_name_, "File (.json, .dwxmz) or demo")->required();
        const bool in_units = row.view == View::kEitherInUnits || row.view == View::kNeutralTables;
        if (row.view == View::kEither || row.view == View::kEitherInUnits) AddNeutral(sub, view_);
        if (row.view != View::kRaw) AddModel(sub, view_, !in_units);
    }
    ExitCode Refuse(std::string problem, Output& out) {
        // It quotes arguments, maybe guarded ones.
        std::erase(problem, kGuard);
        problem_ = problem;
        out.Note("fixtop: " + OneLineMessage(problem));
        out.Note(Usage());
        return ExitCode::kUsage;
    }
    // What is to be said when the line does not begin with a word; empty when it does.
    std::string UnknownWord(const std::vector<std::string>& arguments) const {
        std::string name;
        for (const std::string& argument : arguments) {
            if (argument.rfind('-', 0) == 0) return "";
            name += (name.empty() ? "" : " ") + argument;
            const auto row = RowOf(name);
            if (row == rows_.end()) return NoSuchWord(name);
            if ((*row)->make) return "";
        }
        return "";
    }
    std::string NoSuchWord(const std::string& name) const {
        std::vector<std::string> names;
        for (const WordRow* row : rows_) names.emplace_back(row->name);
        const std::vector<std::string> near = client::NearNames(name, names, 1);
        return "no such word: " + name + (near.empty() ? "" : "; near: " + near.front());
    }
    std::vector<const WordRow*>::const_iterator RowOf(const std::string& name) const {
        return std::find_if(rows_.begin(), rows_.end(),
                            [&](const WordRow* row) { return row->name == name; });
    }
    CLI::App& Chosen() {
        CLI::App* chosen = &app_;
        while (!chosen->get_subcommands().empty()) chosen = chosen->get_subcommands().front();
        return *chosen;
    }
    // As the line has it, without the program; empty without a word.
    std::string ChosenName() {
        std::string name;
        for (const CLI::App* at = &app_; !at->get_subcommands().empty();) {
            at = at->get_subcommands().front();
            name += (name.empty() ? "" : " ") + at->get_name();
        }
        return name;
    }
    // The words before the last one.
    std::string Prefix() {
        std::string name = InProgram() ? "fixtop " + ChosenName() : ChosenName();
        const std::size_t blank = name.find_last_of(' ');
        return &Chosen() == &app_ || blank == std::string::npos ? "" : name.substr(0, blank);
    }
    bool InProgram() const { return place_ == Place::kProgram; }
    std::string Usage() {
        const std::string prefix = Prefix();
        const std::string name = (prefix.empty() ? "" : prefix + ' ') + Chosen().get_name();
        std::string usage = CLI::Formatter().make_usage(&Chosen(), name);
        return WithoutLineEnds(std::move(usage)) + "\nMore with --help.";
    }
    ExitCode RunWord(CommandContext& around) {
        const auto at = RowOf(ChosenName());
        Word& word = *words_[at - rows_.begin()];
        if ((*at)->view == View::kNone || !InProgram()) return Run(word, around);
        view_.neutral |= (*at)->view == View::kNeutral || (*at)->view == View::kNeutralTables;
        const auto session = CaseSession::Open(case_name_, view_, around.out);
        if (!session) return ExitCode::kUnreadable;
        CommandContext with_case{around.out, session.get()};
        return Run(word, with_case);
    }
    ExitCode Run(Word& word, CommandContext& around) {
        const ExitCode code = word.Run(around);
        tells_failures_ = word.TellsFailures();
        return code;
    }

    Place place_;
    CLI::App app_{"Browse, read, change and solve a process-simulation case."};
    std::string case_name_;
    ViewOptions view_;
    std::string problem_;          // what is wrong with the line
    bool tells_failures_ = false;  // the word that ran does
    std::vector<const WordRow*> rows_;
    std::vector<std::unique_ptr<Word>> words_;
};

// The version alone is told without the words, which take longer to make than all else.
ExitCode RunLine(std::vector<std::string> arguments, Place place, CommandContext& around) {
    const bool version = arguments.size() == 1 && arguments.front() == kVersionOption;
    if (place != Place::kProgram || !version) {
        return CommandLine(place).Run(std::move(arguments), around);
    }
    around.out.Line(VersionLine());
    return ExitCode::kOk;
}

}  // namespace

ExitCode Execute(std::vector<std::string> arguments, Place place, CommandContext& around) {
    const int before = MemoryFailures();
    ExitCode code = ExitCode::kUnreadable;
    bool out_of_memory = false;
    try {
        code = RunLine(std::move(arguments), place, around);
    } catch (const std::bad_alloc&) {
        out_of_memory = true;
    } catch (const client::Error&) {
        // Whatever was not found, or refused, for lack of memory.
        if (MemoryFailures() == before) throw;
    }
    around.out.Flush();
    if (!out_of_memory && MemoryFailures() == before) return code;
    TellOutOfMemory();
    return ExitCode::kUnreadable;
}

WordShape ShapeOf(const std::string& word, Place place) {
    return CommandLine(place).ShapeOf(word);
}

CLI::Option* AddText(CLI::App& app, const char* name, std::string& text, const char* help) {
    return app.add_option(name, text, help)->transform(GivenText);
}

CLI::Option* AddName(CLI::App& app, const char* name, std::string& text, const char* help) {
    return app.add_option(name, text, help)->transform(GivenName);
}

CLI::Option* AddNames(CLI::App& app, const char* name, std::vector<std::string>& texts,
                      const char* help) {
    return app.add_option(name, texts, help)->transform(GivenName);
}

CLI::Option* AddFile(CLI::App& app, const char* name, std::string& file, const char* help) {
    const auto name_of = [](const std::string& given) {
        return given.empty() ? std::string("the name of a file is empty") : std::string();
    };
    return AddText(app, name, file, help)->check(name_of);
}

std::string GivenText(std::string argument) {
    if (!argument.empty() && argument.front() == kGuard) argument.erase(0, 1);
    return argument;
}

std::string GivenName(std::string argument) {
    return FromOneLine(GivenText(std::move(argument)));
}

void AddJson(CLI::App& app, bool& json) {
    app.add_flag("--json", json, "Write JSON");
}

void AddSeveral(CLI::App& app, bool& first, bool& all) {
    CLI::Option* only = app.add_flag("--first", first, "The first of several nodes of a path");
    app.add_flag("--all", all, "All nodes of a path")->excludes(only);
}

}  // namespace fixtop
