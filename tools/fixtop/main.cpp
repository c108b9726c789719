#include <exception>

#include "line_text.h"
#include "terminal.h"
#include "word.h"

int main(int count, char** values) {
    terminal::Prepare();
    FileOutput out(stdout, stderr);
    Surroundings around{out};
    try {
        return static_cast<int>(
            Execute(terminal::Arguments(count, values), Place::kProgram, around));
    } catch (const ClosedPipe&) {
        return static_cast<int>(ExitCode::kFailed);
    } catch (const std::exception& error) {
        out.Note("fixtop: " + OneLineMessage(error.what()));
        return static_cast<int>(ExitCode::kFailed);
    }
}
