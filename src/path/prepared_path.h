// SPDX-License-Identifier: Apache-2.0
#pragma once

// Path expressions, read in stretches. Behind the parentheses that end a path for the grammar a
// walk may go on: when they turn out to hold the key of a node, `Stream(Feed).Temperature`. Where
// that is so only the tree can tell, so what follows is a stretch of its own.
//
// PathReader: reads one stretch after the other. PreparedPath: has all of them, for an expression
// that is walked more than once.

#include <span>
#include <string>
#include <vector>

#include "path/path_step.h"
#include "path/tokenizer.h"

namespace fixtop {

struct PathStretch {
    ParsedPath steps;
    FIValue error;         // NULL when the stretch parses
    bool goes_on = false;  // more follows the parentheses of its last step
};

class PathReader {
 public:
    explicit PathReader(const FIValue& source);
    // Null behind the last. Lent until the next call.
    PathStretch* Next();

 private:
    PathTokenizer tokens_;
    PathStretch stretch_;
    bool is_at_end_ = false;
};

class PreparedPath {
 public:
    explicit PreparedPath(const FIValue& source);

    // Why the expression does not parse; NULL when it does.
    const FIValue& Error() const { return stretches_.front().error; }
    std::span<const PathStretch> Stretches() const { return stretches_; }
    // All steps that parse, those of the stretches one behind the other.
    const std::vector<const PathStep*>& Steps() const { return steps_; }
    const std::string& Source() const { return source_; }
    // The text of a step as it was written, without its parentheses and with them.
    std::string BareText(const PathStep& step) const;
    std::string Text(const PathStep& step) const;

 private:
    std::string source_;
    std::vector<PathStretch> stretches_;
    std::vector<const PathStep*> steps_;
};

}  // namespace fixtop
