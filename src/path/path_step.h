// SPDX-License-Identifier: Apache-2.0
#pragma once

// PathStep: one element of a parsed path, a node of a singly linked chain, with the filters that a
// node must pass. The parser builds chains, iterators walk them.
//
// Ownership: a step owns the steps after it and its filters; the first step is freed with Destroy,
// most simply by holding it in a ParsedPath. Steps are not copied.
// Errors: see path/tokenizer.h.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fixtop/value.h"

namespace fixtop {

inline namespace FI {
class FIIteratorBase;
}

class PathStep;
class PathTokenizer;

struct PathStepDestroyer {
    void operator()(PathStep* step) const noexcept;
};

// The owner of a chain.
using ParsedPath = std::unique_ptr<PathStep, PathStepDestroyer>;

// The inside of one pair of brackets: a path and, behind `=`, the text it must equal.
struct PathClause {
    ParsedPath step;
    std::optional<FIValue> value;
    // The value as a number, for nodes that have one.
    FIValue number;
};

struct PathFilter {
    enum Flag : unsigned { kOr = 1, kAnd = 2, kNot = 4 };

    unsigned flags;
    std::unique_ptr<PathClause> clause;
};

class PathStep final {
 public:
    // Steps within steps, behind a `.` or inside brackets, that the parser accepts.
    static constexpr int kDepthLimit = 1000;

    PathStep() { stepKind.SetInt(1); }
    PathStep(const PathStep&) = delete;
    PathStep& operator=(const PathStep&) = delete;

    // The operations stand in the order in which callers of the table expect them.

    // Writes the step, its filters and the steps after it to the debug output.
    virtual void Dump(int indent) const;
    // Frees the chain from here on.
    virtual void Destroy() noexcept;
    virtual PathStep* Next() const noexcept;
    // The name, or the value of the variable that it names: NULL when there is no such variable.
    virtual void ResolveName(FIIteratorBase& it, FIValue& out) const;
    virtual const char* NameText() const noexcept;
    virtual const char* TagText() const noexcept;
    // A null pointer is taken as the empty text.
    virtual void SetTag(const char* text);
    // Whether the step began with `'`, and so stands for its own text.
    virtual bool IsLiteral() const noexcept;
    // The zero-based count behind `#`, -1 when there is none or its variable is missing.
    virtual int ResolveCount(FIIteratorBase& it) const;

    // Whether a step whose name and count resolved so leaves the iterator where it is.
    bool StaysInPlace(const FIValue& resolved, int resolved_count) const;
    const PathStep& Last() const;

    // Recursive descent from the tokenizer's position. ParseStep also consumes the token after the
    // step, which its caller reads back with Peek(-1). A failure fills `error` and ends the parse;
    // what was built until then stays.
    void ParseStep(PathTokenizer& tokens, FIValue& error);
    void ParseFilters(PathTokenizer& tokens, FIValue& error);

    std::string name;         // empty when the step has none
    FIValue count;            // NULL, an INT, or the name of a variable
    FIValue stepKind;         // always INT 1
    bool isVariable = false;  // `name` names a variable
    bool isLiteral = false;
    ParsedPath next;
    std::vector<PathFilter> filters;  // in written order
    FIValue attribute;                // NULL, or the text inside ( )
    // Where the step stands in the expression: from `begin` to the parentheses, and with them.
    std::size_t begin = 0;
    std::size_t bare_end = 0;
    std::size_t end = 0;
    std::string tag;

 private:
    ~PathStep() = default;

    bool ParseCount(PathTokenizer& tokens, FIValue& error);
    void ParseAttribute(PathTokenizer& tokens, FIValue& error);
    bool ParseClause(unsigned flags, PathTokenizer& tokens, FIValue& error);
};

// The chain as one line, for tests and tools. Every text is quoted and every filter led by its
// operator: a[x=1]|![y].b(c) becomes "a"&["x"="1"]|!["y"]."b"("c"). The line is itself a path that
// parses to an equal chain.
std::string Describe(const PathStep& step);

}  // namespace fixtop
