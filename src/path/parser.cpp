// SPDX-License-Identifier: Apache-2.0
// The parser of path expressions: recursive descent over the tokens, one function per rule.
//
//   path    := step
//   step    := ['] [%] [string] [# [%] count] [filters] ( "(" string ")" | . step | nothing )
//   filters := first { later }
//   first   := "[" clause "]"
//   later   := [| or &] [!] "[" clause "]"
//   clause  := path [= string]

#include "path/path_step.h"
#include "path/tokenizer.h"

namespace fixtop {

namespace {

constexpr char kCountExpected[] = "Parse error, count expected following # in: ";
constexpr char kStringExpected[] = "Parse error, string expected in: ";
constexpr char kOpenExpected[] = "Parse error, [ expected in: ";
constexpr char kCloseExpected[] = "Parse error, ] expected in: ";
constexpr char kParenthesisExpected[] = "Parse error, ) expected in: ";
constexpr char kTooDeep[] = "Parse error, path is too deep in: ";

// Fills `error` and answers false, for a caller to pass on.
bool Fail(const char* message, const PathTokenizer& tokens, FIValue& error) {
    error.SetText(message);
    error.AppendValue(tokens.Source());
    return false;
}

bool Is(const PathToken* token, char mark) {
    return token != nullptr && token->Is(mark);
}

bool IsString(const PathToken* token) {
    return token != nullptr && token->kind == PathToken::kString;
}

void SetText(FIValue& value, std::string_view text) {
    value.SetText(text.data(), text.size());
}

bool BeginsFilter(const PathToken* token) {
    return token != nullptr && token->kind == PathToken::kPunctuation &&
           std::string_view("[|!&").find(token->text[0]) != std::string_view::npos;
}

// Consumes the operators before a bracket and the bracket; false when there is none.
bool ReadFilterStart(PathTokenizer& tokens, unsigned& flags) {
    const PathToken* token = tokens.Next();
    flags = Is(token, '|') ? PathFilter::kOr : PathFilter::kAnd;
    if (Is(token, '|') || Is(token, '&')) token = tokens.Next();
    if (Is(token, '!')) {
        flags |= PathFilter::kNot;
        token = tokens.Next();
    }
    return Is(token, '[');
}

}  // namespace

PathStep* PathTokenizer::Parse(FIValue& error) {
    error.Clear();
    ParsedPath step(new PathStep);
    step->ParseStep(*this, error);
    return step.release();
}

ParsedPath ParsePath(const FIValue& source, FIValue& error) {
    PathTokenizer tokens;
    tokens.Assign(source);
    tokens.Tokenize();
    return ParsedPath(tokens.Parse(error));
}

void PathStep::ParseStep(PathTokenizer& tokens, FIValue& error) {
    const PathTokenizer::Level level(tokens);
    if (level.TooDeep()) {
        Fail(kTooDeep, tokens, error);
        return;
    }
    name.clear();
    begin = tokens.Offset();
    if (tokens.PeekIs('\'')) {
        isLiteral = true;
        tokens.Next();
    }
    if (tokens.PeekIs('%')) {
        isVariable = true;
        tokens.Next();
    }
    if (IsString(tokens.Peek())) name = tokens.Next()->text;
    if (tokens.PeekIs('#') && !ParseCount(tokens, error)) return;
    ParseFilters(tokens, error);
    if (!error.IsNull()) return;

    bare_end = end = tokens.Offset();
    const PathToken* after = tokens.Next();
    if (Is(after, '(')) {
        ParseAttribute(tokens, error);
    } else if (Is(after, '.')) {
        next.reset(new PathStep);
        next->ParseStep(tokens, error);
    }
}

// The count may be any token: of a punctuation character only its text counts.
bool PathStep::ParseCount(PathTokenizer& tokens, FIValue& error) {
    tokens.Next();
    const PathToken* token = tokens.Next();
    const bool variable = Is(token, '%');
    if (variable) token = tokens.Next();
    if (token == nullptr) return Fail(kCountExpected, tokens, error);
    SetText(count, token->text);
    if (!variable) count.ConvertTo(FIValue::kInt);
    return true;
}

// Ends the step whatever follows: the token behind the parenthesis is left to the caller.
void PathStep::ParseAttribute(PathTokenizer& tokens, FIValue& error) {
    const PathToken* token = tokens.Next();
    if (!IsString(token)) {
        Fail(kStringExpected, tokens, error);
        return;
    }
    SetText(attribute, token->text);
    if (!Is(tokens.Next(), ')')) {
        Fail(kParenthesisExpected, tokens, error);
        return;
    }
    end = tokens.Peek(-1)->end;
    tokens.Next();
}

void PathStep::ParseFilters(PathTokenizer& tokens, FIValue& error) {
    if (tokens.PeekIs('!')) {
        // Negation needs a filter before it.
        tokens.Next();
        Fail(kOpenExpected, tokens, error);
        return;
    }
    while (BeginsFilter(tokens.Peek())) {
        unsigned flags;
        if (!ReadFilterStart(tokens, flags)) {
            Fail(kOpenExpected, tokens, error);
            return;
        }
        if (!ParseClause(flags, tokens, error)) return;
    }
}

bool PathStep::ParseClause(unsigned flags, PathTokenizer& tokens, FIValue& error) {
    filters.push_back({flags, std::make_unique<PathClause>()});
    PathClause& clause = *filters.back().clause;
    clause.step.reset(new PathStep);
    clause.step->ParseStep(tokens, error);
    if (!error.IsNull()) return false;

    const PathToken* token = tokens.Peek(-1);
    if (Is(token, '=')) {
        token = tokens.Next();
        if (!IsString(token)) return Fail(kStringExpected, tokens, error);
        SetText(clause.value.emplace(), token->text);
        clause.number.SetReal(clause.value->AsDouble());
        token = tokens.Next();
    }
    return Is(token, ']') || Fail(kCloseExpected, tokens, error);
}

}  // namespace fixtop
