// SPDX-License-Identifier: Apache-2.0
#pragma once

// Lines typed at the shell's prompt: cut into words, and completed.

#include <optional>
#include <string>
#include <vector>

#include "terminal.h"

namespace fixtop {

class CaseSession;

struct ShellWord {
    std::string text;       // as the command gets it
    std::size_t start = 0;  // where it begins in the line
};

// Words stand apart by blanks. What stands in single quotes is held together and loses them; what
// stands in double quotes is held together and keeps them, as paths want them. Nothing when a quote
// is not closed.
std::optional<std::vector<ShellWord>> SplitLine(const std::string& line);

// What may stand at the end of a line: words, options, node names, keys and attribute names behind
// "(", attribute names behind "--attr".
terminal::Completion CompleteLine(CaseSession& session, const std::string& line);

}  // namespace fixtop
