// SPDX-License-Identifier: Apache-2.0
#pragma once

// What differs between the consoles of the platforms.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fixtop::terminal {

// UTF-8 on the console, line ends as they are written, and a closed pipe told by a failed write. A
// standard stream that is closed can't be read or written from then on, whatever files are opened.
void Prepare();
// The command line in UTF-8, without the program's name.
std::vector<std::string> Arguments(int count, char** values);
// Standard input is a person at a keyboard.
bool InputIsTyped();
// Standard output is a terminal.
bool DataIsSeen();
// Standard error is seen by a person.
bool NotesAreSeen();

// Runs the Python of the package, with these arguments and this console, and waits for its end.
// That is /usr/bin/python3, or the program that FIXTOP_PYTHON names. Answers its exit status; -1
// when it can't be started, or was stopped, or where the platform has no package.
int RunPython(std::vector<std::string> arguments);

// While one lives, ^C does not end the program: it is remembered for whatever is at work to ask
// about. One lives at a time.
class InterruptGuard {
 public:
    InterruptGuard();
    ~InterruptGuard();
    InterruptGuard(const InterruptGuard&) = delete;
    InterruptGuard& operator=(const InterruptGuard&) = delete;
};
// ^C was typed since the guard was made that lives; false without one.
bool IsInterrupted();

// What may stand at the end of a line: the replacements for its text from `start` on.
struct Completion {
    std::size_t start = 0;
    std::vector<std::string> candidates;
};
using Completer = std::function<Completion(const std::string& line_to_cursor)>;

// Source of typed or piped lines.
class LineReader {
 public:
    virtual ~LineReader() = default;
    // The next line without its end; nothing when the input has ended.
    virtual std::optional<std::string> Read(const std::string& prompt) = 0;
};

// With history and completion where the platform has them and the input is typed.
std::unique_ptr<LineReader> OpenLineReader(Completer completer);
// Lines as they come, without a prompt unless they are typed.
std::unique_ptr<LineReader> OpenPlainReader();

}  // namespace fixtop::terminal
