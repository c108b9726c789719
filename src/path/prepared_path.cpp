// SPDX-License-Identifier: Apache-2.0
#include "path/prepared_path.h"

namespace fixtop {

namespace {

// Of a usual path.
constexpr std::size_t kUsualSteps = 8;

// Behind a step that was parsed, to what is left of the path where its parentheses turn out to hold
// a key: more steps, or parentheses with an attribute, which are a step that stays.
bool GoToRest(PathTokenizer& tokens) {
    const PathToken* last = tokens.Peek(-1);
    if (!last || !last->Is('(')) return last && last->Is('.') && tokens.Peek(0);
    tokens.Return();
    return true;
}

}  // namespace

PathReader::PathReader(const FIValue& source) {
    tokens_.Assign(source);
    tokens_.Tokenize();
}

PathStretch* PathReader::Next() {
    if (is_at_end_) return nullptr;
    stretch_.steps.reset(tokens_.Parse(stretch_.error));
    stretch_.goes_on = GoToRest(tokens_);
    is_at_end_ = !stretch_.goes_on || !stretch_.error.IsNull();
    return &stretch_;
}

PreparedPath::PreparedPath(const FIValue& source) : source_(source.ToText()) {
    PathReader reader(source);
    stretches_.reserve(1);
    while (PathStretch* stretch = reader.Next()) stretches_.push_back(std::move(*stretch));
    steps_.reserve(kUsualSteps);
    for (const PathStretch& stretch : stretches_) {
        if (!stretch.error.IsNull()) break;
        for (const PathStep* step = stretch.steps.get(); step; step = step->Next()) {
            steps_.push_back(step);
        }
    }
}

std::string PreparedPath::BareText(const PathStep& step) const {
    return source_.substr(step.begin, step.bare_end - step.begin);
}

std::string PreparedPath::Text(const PathStep& step) const {
    return source_.substr(step.begin, step.end - step.begin);
}

}  // namespace fixtop
