// SPDX-License-Identifier: Apache-2.0
#include "path/path_step.h"

#include <algorithm>

#include "platform/debug_output.h"
#include "value/text_forms.h"

namespace fixtop {

namespace {

constexpr int kLargestIndent = 80;

// One piece of the debug output, indented by at most kLargestIndent blanks.
void WriteIndented(int indent, const std::string& text) {
    const auto blanks = static_cast<std::size_t>(std::clamp(indent, 0, kLargestIndent));
    WriteDebugLine((std::string(blanks, ' ') + text).c_str());
}

void DescribeStep(const PathStep& step, std::string& out);

void DescribeFilter(const PathFilter& filter, std::string& out) {
    out += filter.flags & PathFilter::kOr ? '|' : '&';
    if (filter.flags & PathFilter::kNot) out += '!';
    out += '[';
    DescribeStep(*filter.clause->step, out);
    if (filter.clause->value) {
        out += '=';
        text_forms::QuoteForPath(filter.clause->value->ToText(), out);
    }
    out += ']';
}

void DescribeStep(const PathStep& first, std::string& out) {
    for (const PathStep* step = &first; step != nullptr; step = step->Next()) {
        if (step != &first) out += '.';
        if (step->isLiteral) out += '\'';
        if (step->isVariable) out += '%';
        text_forms::QuoteForPath(step->name, out);
        if (!step->count.IsNull()) out += step->count.IsText() ? "#%" : "#";
        if (step->count.IsText()) {
            text_forms::QuoteForPath(step->count.CStr(), out);
        } else {
            out += step->count.ToText();
        }
        for (const PathFilter& filter : step->filters) DescribeFilter(filter, out);
        if (step->attribute.IsNull()) continue;
        out += '(';
        text_forms::QuoteForPath(step->attribute.CStr(), out);
        out += ')';
    }
}

}  // namespace

void PathStepDestroyer::operator()(PathStep* step) const noexcept {
    step->Destroy();
}

// A chain may be long: it is taken apart link by link, never from within a destructor.
void PathStep::Destroy() noexcept {
    PathStep* step = this;
    while (step != nullptr) {
        PathStep* following = step->next.release();
        delete step;
        step = following;
    }
}

PathStep* PathStep::Next() const noexcept {
    return next.get();
}

const PathStep& PathStep::Last() const {
    const PathStep* last = this;
    while (last->Next()) last = last->Next();
    return *last;
}

const char* PathStep::NameText() const noexcept {
    return name.c_str();
}

const char* PathStep::TagText() const noexcept {
    return tag.c_str();
}

void PathStep::SetTag(const char* text) {
    tag = text == nullptr ? "" : text;
}

bool PathStep::IsLiteral() const noexcept {
    return isLiteral;
}

void PathStep::Dump(int indent) const {
    WriteIndented(indent, name);
    for (const PathFilter& filter : filters) {
        if (filter.flags & PathFilter::kAnd) WriteIndented(indent, "  &\n");
        if (filter.flags & PathFilter::kOr) WriteIndented(indent, "  |\n");
        if (filter.flags & PathFilter::kNot) WriteIndented(indent, "  !\n");
        WriteIndented(indent, "  [\n");
        filter.clause->step->Dump(indent + 3);
        if (filter.clause->value) {
            WriteIndented(indent, "  =\n");
            WriteIndented(indent, "   " + filter.clause->value->ToText() + "\n");
        }
        WriteIndented(indent, "  ]\n");
    }
    if (next) next->Dump(indent + 1);
}

std::string Describe(const PathStep& step) {
    std::string out;
    DescribeStep(step, out);
    return out;
}

}  // namespace fixtop
