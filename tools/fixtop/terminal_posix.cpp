// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <histedit.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "terminal.h"

namespace fixtop::terminal {

namespace {

constexpr int kHistoryLines = 1000;

volatile std::sig_atomic_t interrupted = 0;
struct sigaction former_action;

// What all candidates begin with.
std::string CommonBeginning(const std::vector<std::string>& candidates) {
    std::string common = candidates.front();
    for (const std::string& candidate : candidates) {
        const auto end =
            std::mismatch(common.begin(), common.end(), candidate.begin(), candidate.end()).first;
        common.erase(end, common.end());
    }
    return common;
}

// Texts are UTF-8 whatever the environment says, and a locale without them drops what is typed.
void ChooseLocale() {
    std::setlocale(LC_CTYPE, "");
    if (MB_CUR_MAX == 1) std::setlocale(LC_CTYPE, "C.UTF-8");
}

class EditedReader final : public LineReader {
 public:
    explicit EditedReader(Completer completer) : completer_(std::move(completer)) {
        ChooseLocale();
        history_ = history_init();
        HistEvent event;
        history(history_, &event, H_SETSIZE, kHistoryLines);
        history(history_, &event, H_SETUNIQUE, 1);
        edit_ = el_init("fixtop", stdin, stdout, stderr);
        el_set(edit_, EL_CLIENTDATA, this);
        el_set(edit_, EL_PROMPT, &Prompt);
        el_set(edit_, EL_EDITOR, "emacs");
        el_set(edit_, EL_SIGNAL, 1);
        el_set(edit_, EL_HIST, history, history_);
        el_set(edit_, EL_ADDFN, "fixtop-complete", "Complete the word", &Complete);
        el_set(edit_, EL_BIND, "^I", "fixtop-complete", nullptr);
        // While a line is edited the keys that send signals are keys like any other: a signal
        // would not end the reading of the line for certain.
        el_set(edit_, EL_SETTY, "-d", "-isig", nullptr);
        el_set(edit_, EL_ADDFN, "fixtop-drop", "Drop the line", &Drop);
        el_set(edit_, EL_BIND, "^C", "fixtop-drop", nullptr);
        el_set(edit_, EL_ADDFN, "fixtop-suspend", "Suspend the program", &Suspend);
        el_set(edit_, EL_BIND, "^Z", "fixtop-suspend", nullptr);
    }
    ~EditedReader() override {
        el_end(edit_);
        history_end(history_);
    }
    EditedReader(const EditedReader&) = delete;
    EditedReader& operator=(const EditedReader&) = delete;

    std::optional<std::string> Read(const std::string& prompt) override {
        prompt_ = prompt;
        dropped_ = false;
        int length = 0;
        // The prompt says that keys are read; it is shown before they would be by themselves.
        el_set(edit_, EL_PREP_TERM, 1);
        const char* typed = el_gets(edit_, &length);
        if (dropped_) {
            std::fputc('\n', stdout);
            return "";
        }
        if (!typed || length <= 0) return std::nullopt;
        std::string line(typed, static_cast<std::size_t>(length));
        while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.pop_back();
        HistEvent event;
        if (!line.empty()) history(history_, &event, H_ENTER, line.c_str());
        return line;
    }

 private:
    static EditedReader& Self(EditLine* edit) {
        EditedReader* self = nullptr;
        el_get(edit, EL_CLIENTDATA, &self);
        return *self;
    }
    static char* Prompt(EditLine* edit) { return Self(edit).prompt_.data(); }
    static unsigned char Complete(EditLine* edit, int) { return Self(edit).CompleteWord(); }

    static unsigned char Drop(EditLine* edit, int) {
        Self(edit).dropped_ = true;
        return CC_NEWLINE;
    }
    static unsigned char Suspend(EditLine*, int) {
        std::raise(SIGTSTP);
        return CC_REFRESH;
    }

    unsigned char CompleteWord() {
        const LineInfo* line = el_line(edit_);
        const std::string typed(line->buffer, line->cursor);
        const Completion completion = completer_(typed);
        if (completion.candidates.empty()) return CC_ERROR;
        const std::string common = CommonBeginning(completion.candidates);
        const int old_length = static_cast<int>(typed.size() - completion.start);
        if (common != typed.substr(completion.start)) {
            el_deletestr(edit_, old_length);
            el_insertstr(edit_, common.c_str());
            return CC_REFRESH;
        }
        if (completion.candidates.size() == 1) return CC_NORM;
        std::fputc('\n', stdout);
        for (const std::string& candidate : completion.candidates) std::puts(candidate.c_str());
        return CC_REDISPLAY;
    }

    Completer completer_;
    std::string prompt_;
    bool dropped_ = false;
    EditLine* edit_;
    History* history_;
};

}  // namespace

void Prepare() {
    std::signal(SIGPIPE, SIG_IGN);
    // A file that is opened takes the lowest number that is free: not one of these.
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        const int useless = number == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        if (fcntl(number, F_GETFD) < 0 && open("/dev/null", useless) < 0) std::abort();
    }
}

// A read that waits for input ends with an error, so that the keyboard is not waited for.
InterruptGuard::InterruptGuard() {
    interrupted = 0;
    sigaction(SIGINT, nullptr, &former_action);
    struct sigaction remember {};
    remember.sa_handler = [](int) { interrupted = 1; };
    if (former_action.sa_handler != SIG_IGN) sigaction(SIGINT, &remember, nullptr);
}
InterruptGuard::~InterruptGuard() {
    sigaction(SIGINT, &former_action, nullptr);
    interrupted = 0;
}
bool IsInterrupted() {
    return interrupted != 0;
}

std::vector<std::string> Arguments(int count, char** values) {
    return {values + std::min(count, 1), values + count};
}

bool InputIsTyped() {
    return isatty(STDIN_FILENO) != 0;
}
bool DataIsSeen() {
    return isatty(STDOUT_FILENO) != 0;
}
bool NotesAreSeen() {
    return isatty(STDERR_FILENO) != 0;
}

int RunPython(std::vector<std::string> arguments) {
    const char* const chosen = std::getenv("FIXTOP_PYTHON");
    std::string program = chosen && *chosen ? chosen : "/usr/bin/python3";
    std::vector<char*> line = {program.data()};
    for (std::string& each : arguments) line.push_back(each.data());
    line.push_back(nullptr);
    pid_t child = 0;
    if (posix_spawnp(&child, line[0], nullptr, nullptr, line.data(), environ) != 0) return -1;
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) return -1;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::unique_ptr<LineReader> OpenLineReader(Completer completer) {
    if (!InputIsTyped()) return OpenPlainReader();
    return std::make_unique<EditedReader>(std::move(completer));
}

}  // namespace fixtop::terminal
