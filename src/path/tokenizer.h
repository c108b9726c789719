// SPDX-License-Identifier: Apache-2.0
#pragma once

// PathTokenizer: splits the text of a path expression into punctuation and strings, and starts the
// parser on them.
//
// Ownership: holds a copy of the source and the text of all tokens; tokens live until the next
// Tokenize. Errors: tokenizing has none, a quote that is never closed ends with the text. Parse
// reports through its argument, always as "Parse error, ... in: " and the source.

#include <string>
#include <string_view>
#include <vector>

#include "fixtop/value.h"
#include "path/path_step.h"

namespace fixtop {

struct PathToken {
    enum Kind : int { kPunctuation = 1, kString = 2 };

    Kind kind;
    std::string_view text;  // one character for punctuation; NUL terminated for a string
    std::size_t begin = 0;  // where it stands in the source, and what follows it
    std::size_t end = 0;

    bool Is(char mark) const noexcept { return kind == kPunctuation && text[0] == mark; }
};

class PathTokenizer {
 public:
    PathTokenizer() = default;
    PathTokenizer(const PathTokenizer&) = delete;
    PathTokenizer& operator=(const PathTokenizer&) = delete;

    void Assign(const FIValue& source);
    // A number is one string token with its text, NULL is no token at all.
    void Tokenize();

    const FIValue& Source() const noexcept { return source_; }

    // The token at the position, which moves on; null at the end, where it stays.
    const PathToken* Next() noexcept {
        const PathToken* token = Peek(0);
        if (token != nullptr) ++position_;
        return token;
    }
    // Back to the token last consumed.
    void Return() noexcept {
        if (position_ > 0) --position_;
    }
    // The token at position plus `offset`, or null. Peek(-1) is the token last consumed.
    const PathToken* Peek(int offset = 0) const noexcept {
        const std::size_t index = position_ + static_cast<std::size_t>(offset);
        return index < tokens_.size() ? &tokens_[index] : nullptr;
    }
    bool PeekIs(char mark) const noexcept {
        const PathToken* token = Peek(0);
        return token != nullptr && token->Is(mark);
    }

    // Where the present token begins in the source; its end when there is none.
    std::size_t Offset() const noexcept {
        const PathToken* token = Peek(0);
        if (token) return token->begin;
        return tokens_.empty() ? 0 : tokens_.back().end;
    }

    // The whole path from the present position. The caller owns the chain, also when `error` was
    // filled; test `error` first. `error` is NULL after a success.
    PathStep* Parse(FIValue& error);

    // How deep the parser is within steps; counted by the steps themselves while they parse.
    class Level {
     public:
        explicit Level(PathTokenizer& tokens) noexcept : depth_(++tokens.depth_), tokens_(tokens) {}
        ~Level() { --tokens_.depth_; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;

        bool TooDeep() const noexcept { return depth_ > PathStep::kDepthLimit; }

     private:
        const int depth_;
        PathTokenizer& tokens_;
    };

 private:
    std::string_view StoreText(std::size_t begin);
    std::size_t ReadQuoted(std::string_view text, std::size_t position);
    std::size_t ReadPlain(std::string_view text, std::size_t position);

    FIValue source_;
    std::string storage_;  // the text of the string tokens; never grows while they are made
    std::vector<PathToken> tokens_;
    std::size_t position_ = 0;
    int depth_ = 0;
};

// Tokenizes and parses `source` in one call.
ParsedPath ParsePath(const FIValue& source, FIValue& error);

}  // namespace fixtop
