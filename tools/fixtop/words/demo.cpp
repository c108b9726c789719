#include <map>

#include "case_session.h"
#include "shell_line.h"
#include "words/makers.h"

namespace {

// One line of the tour with what must come of it.
struct Stop {
    const char* say;
    const char* line;
    const char* shows;               // stands somewhere in what the line writes
    ExitCode code = ExitCode::kOk;
    bool differs = false;            // from what the same line wrote before
};

constexpr Stop kTour[] = {
    {"The case is a tree. These are the nodes below its top.", "ls", "appModel"},
    {"Streams of the main flowsheet:", "ls appModel.FlowSheetObjects.Streams", "Feed"},
    {"A stream with its values:", "tree appModel.FlowSheetObjects.Streams.Feed", "Temperature = "},
};

class Demo final : public Word {
public:
    void Declare(CLI::App&) override {}

    ExitCode Run(Surroundings& around) override {
        std::string problem;
        const auto session = CaseSession::Open("demo", problem);
        if (!session) {
            around.out.Note(problem);
            return ExitCode::kUnreadable;
        }
        around.out.Line("$ fixtop shell demo");
        ExitCode code = ExitCode::kOk;
        for (const Stop& stop : kTour) {
            if (!Visit(stop, *session, around.out)) code = ExitCode::kFailed;
        }
        around.out.Line("\nTop> quit");
        return code;
    }

private:
    bool Visit(const Stop& stop, CaseSession& session, Output& out) {
        out.Line(std::string("\n# ") + stop.say);
        out.Line(NameOf(session.Here()) + "> " + stop.line);
        RecordingOutput recording(out);
        Surroundings around{recording, &session};
        std::vector<std::string> arguments;
        for (const ShellWord& word : SplitLine(stop.line).value()) arguments.push_back(word.text);
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

std::unique_ptr<Word> MakeDemo() { return std::make_unique<Demo>(); }
