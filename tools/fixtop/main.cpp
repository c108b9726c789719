// SPDX-License-Identifier: Apache-2.0
#include <exception>

#include "line_text.h"
#include "memory.h"
#include "terminal.h"
#include "word.h"

namespace fixtop {

namespace {

ExitCode Run(int count, char** values, Output& out) {
    CommandContext around{out};
    try {
        return Execute(terminal::Arguments(count, values), Place::kProgram, around);
    } catch (const ClosedPipe&) {
        return ExitCode::kFailed;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        out.Note("fixtop: " + OneLineMessage(error.what()));
        return ExitCode::kFailed;
    }
}

}  // namespace

}  // namespace fixtop

using namespace fixtop;

int main(int count, char** values) {
    try {
        terminal::Prepare();
        FileOutput out(stdout, stderr, terminal::DataIsSeen());
        return static_cast<int>(Run(count, values, out));
    } catch (const std::exception&) {
        TellOutOfMemory();
        return static_cast<int>(ExitCode::kUnreadable);
    }
}
