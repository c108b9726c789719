// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <iostream>
#include <optional>
#include <system_error>

#include "case_session.h"
#include "shell_line.h"
#include "terminal.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class Shell final : public Word {
 public:
    void Declare(CLI::App&) override {}

    ExitCode Run(CommandContext& around) override {
        CaseSession& session = *around.session;
        session.TheChanges().Keep();
        const auto reader = terminal::OpenLineReader(
            [&](const std::string& line) { return CompleteLine(session, line); });
        ExitCode last = ExitCode::kOk;
        while (!around.leave_shell) {
            const auto line = reader->Read(Prompt(session));
            session.TheChanges().BeginLine();
            if (line) last = RunGuarded(*line, last, around);
            if (!line || around.leave_shell) around.leave_shell = MayLeave(session, *reader);
        }
        return output_lost_ && last == ExitCode::kOk ? ExitCode::kFailed : last;
    }

 private:
    // Who types is asked when something is not saved; the end of the input is an answer too.
    static bool MayLeave(CaseSession& session, terminal::LineReader& reader) {
        if (!terminal::InputIsTyped() || !session.TheChanges().AreUnsaved()) return true;
        const auto answer = reader.Read("Changes are not saved. Leave all the same? [y/N] ");
        return !answer || answer->starts_with('y') || answer->starts_with('Y');
    }
    static std::string Prompt(CaseSession& session) {
        return OneLine(session.Here().Name()) + "> ";
    }

    // What a person types can be interrupted, and the shell goes on. It does so too when its output
    // can't be written, for the lines to come may save what was done.
    ExitCode RunGuarded(const std::string& line, ExitCode last, CommandContext& around) {
        std::optional<terminal::InterruptGuard> guard;
        if (terminal::InputIsTyped()) guard.emplace();
        try {
            return RunLine(line, last, around);
        } catch (const Interrupted&) {
            around.out.Note("interrupted");
            std::clearerr(stdin);
            std::cin.clear();
        } catch (const ClosedPipe&) {
            output_lost_ = true;
        } catch (const std::system_error& error) {
            if (!output_lost_) around.out.Note(std::string("fixtop: ") + error.what());
            output_lost_ = true;
        }
        return ExitCode::kFailed;
    }

    static ExitCode RunLine(const std::string& line, ExitCode last, CommandContext& around) {
        const auto words = SplitLine(line);
        if (!words) {
            around.out.Note("a quote is not closed: " + OneLine(line));
            return ExitCode::kUsage;
        }
        if (words->empty()) return last;
        std::vector<std::string> arguments;
        for (const ShellWord& word : *words) arguments.push_back(word.text);
        return Execute(std::move(arguments), Place::kShell, around);
    }

    bool output_lost_ = false;
};

class Complete final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddText(app, "LINE", line_, "Line up to the cursor")->required();
    }
    ExitCode Run(CommandContext& around) override {
        const auto completion = CompleteLine(*around.session, line_);
        for (const std::string& candidate : completion.candidates) around.out.Line(candidate);
        return completion.candidates.empty() ? ExitCode::kFailed : ExitCode::kOk;
    }

 private:
    std::string line_;
};

}  // namespace

std::unique_ptr<Word> MakeShell() {
    return std::make_unique<Shell>();
}
std::unique_ptr<Word> MakeComplete() {
    return std::make_unique<Complete>();
}

}  // namespace fixtop
