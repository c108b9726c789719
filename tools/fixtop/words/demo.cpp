// SPDX-License-Identifier: Apache-2.0
#include <map>

#include "case_session.h"
#include "shell_line.h"
#include "words/makers.h"

namespace fixtop {

namespace {

// One line of the tour with what must come of it.
struct Stop {
    const char* say;
    const char* line;
    const char* shows;  // stands somewhere in what the line writes
    ExitCode code = ExitCode::kOk;
    bool differs = false;  // from what the same line wrote before
};

constexpr Stop kTour[] = {
    {"The case is a tree. These are the nodes below its top:", "ls", "appModel"},
    {"We go to the flowsheet; paths begin there from now on.", "cd appModel.FlowSheetObjects", ""},
    {"Its streams:", "ls Streams", "Sales Gas"},
    {"A cooler with all that it knows:", "tree UnitOps.E-100", "Product Temperature := -20 C"},
    {"One value, as it is shown and in another unit:", "get 'Streams.Raw Gas.Temperature'", "30\n"},
    {"", "get 'Streams.Raw Gas.Temperature' --unit K", "303.15\n"},
    {"Temperatures of all streams that are vapour, found by a filter:",
     "find 'Streams.*[Vapour Fraction=1].Temperature'", "Streams.Cold Gas.Temperature\n"},
    {"The plant makes this much sales gas (kgmole/h):", "get 'Streams.Sales Gas.Molar Flow'", ""},
    {"We feed more raw gas; the store solves the case.",
     "set 'Streams.Raw Gas.Molar Flow' 1200 --unit kgmole/h", "1200\n"},
    {"The solver has nothing left to do:", "solve", "Solve is complete\n"},
    {"And the product has changed:", "get 'Streams.Sales Gas.Molar Flow'", "", ExitCode::kOk, true},
    {"What the solver calculates can't be stored:", "set 'Streams.Sales Gas.Molar Flow' 900",
     "Value not stored; it is calculated\n", ExitCode::kFailed},
    {"A path that leads nowhere says how far it came:", "get 'Streams.Raw Gass.Temperature'",
     "near: Raw Gas", ExitCode::kFailed},
    {"And one that can't be read says why:", "get Streams.*[Temperature",
     "Parse error, ] expected in: Streams.*[Temperature\n", ExitCode::kFailed},
};

class Demo final : public Word {
 public:
    void Declare(CLI::App&) override {}

    ExitCode Run(CommandContext& around) override {
        std::string problem;
        const auto session = CaseSession::Open("demo", {}, problem);
        if (!session) {
            around.out.Note(problem);
            return ExitCode::kUnreadable;
        }
        around.out.Line("$ fixtop shell demo");
        ExitCode code = ExitCode::kOk;
        for (const Stop& stop : kTour) {
            if (!Visit(stop, *session, around.out)) code = ExitCode::kFailed;
        }
        around.out.Line('\n' + Prompt(*session) + "quit");
        return code;
    }

 private:
    static std::string Prompt(CaseSession& session) { return session.Here().Name() + "> "; }

    bool Visit(const Stop& stop, CaseSession& session, Output& out) {
        if (*stop.say) out.Line(std::string("\n# ") + stop.say);
        out.Line(Prompt(session) + stop.line);
        RecordingOutput recording(out);
        CommandContext around{recording, &session};
        const auto words = SplitLine(stop.line).value_or(std::vector<ShellWord>());
        std::vector<std::string> arguments;
        arguments.reserve(words.size());
        for (const ShellWord& word : words) arguments.push_back(word.text);
        const ExitCode code = Execute(std::move(arguments), Place::kShell, around);
        std::string& before = written_[stop.line];
        const bool changed = before != recording.Recorded();
        before = recording.Recorded();
        const bool shown = before.find(stop.shows) != std::string::npos;
        if (code == stop.code && shown && (changed || !stop.differs)) return true;
        out.Note(std::string("this did not do what it should: ") + stop.line);
        return false;
    }

    std::map<std::string, std::string> written_;
};

}  // namespace

std::unique_ptr<Word> MakeDemo() {
    return std::make_unique<Demo>();
}

}  // namespace fixtop
