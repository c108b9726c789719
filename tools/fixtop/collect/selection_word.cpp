// SPDX-License-Identifier: Apache-2.0
#include "collect/selection_word.h"

namespace fixtop {

ExitCode SelectionWord::Run(CommandContext& around) {
    try {
        return Work(around);
    } catch (const client::CaseError& error) {
        around.out.Note(MessageOf(error));
        return ExitCode::kUnreadable;
    }
}

}  // namespace fixtop
