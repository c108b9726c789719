// SPDX-License-Identifier: Apache-2.0
#include "path/tokenizer.h"

#include <algorithm>

#include "value/text_forms.h"

namespace fixtop {

namespace {

// Tokens of a usual path of a handful of steps fit without growing.
constexpr std::size_t kUsualTokens = 24;

using text_forms::IsPathSpecial;

}  // namespace

void PathTokenizer::Assign(const FIValue& source) {
    source_.Assign(source);
}

void PathTokenizer::Tokenize() {
    position_ = 0;
    tokens_.clear();
    storage_.clear();
    if (source_.IsNull()) return;
    tokens_.reserve(kUsualTokens);
    if (source_.IsNumber()) {
        storage_ = source_.ToText();
        tokens_.push_back({PathToken::kString, storage_, 0, storage_.size()});
        return;
    }
    const std::string_view text = source_.CStr();
    // Every string but the first follows a character that is not stored: room for its NUL.
    storage_.reserve(text.size() + 2);
    std::size_t position = 0;
    while (position < text.size()) {
        if (text[position] == '"') {
            position = ReadQuoted(text, position + 1);
        } else if (IsPathSpecial(text[position])) {
            tokens_.push_back(
                {PathToken::kPunctuation, text.substr(position, 1), position, position + 1});
            ++position;
        } else {
            position = ReadPlain(text, position);
        }
    }
}

// Closes the string that was added to the storage from `begin` on.
std::string_view PathTokenizer::StoreText(std::size_t begin) {
    const std::size_t length = storage_.size() - begin;
    storage_.push_back('\0');
    return {storage_.data() + begin, length};
}

std::size_t PathTokenizer::ReadQuoted(std::string_view text, std::size_t position) {
    const std::size_t start = position - 1;
    const std::size_t begin = storage_.size();
    while (position < text.size()) {
        const std::size_t quote = std::min(text.find('"', position), text.size());
        storage_.append(text.substr(position, quote - position));
        position = quote + 1;
        if (position >= text.size() || text[position] != '"') break;
        storage_.push_back('"');
        ++position;
    }
    position = std::min(position, text.size());
    tokens_.push_back({PathToken::kString, StoreText(begin), start, position});
    return position;
}

std::size_t PathTokenizer::ReadPlain(std::string_view text, std::size_t position) {
    const std::size_t begin = storage_.size();
    const auto stop = std::find_if(text.begin() + position, text.end(), IsPathSpecial);
    storage_.append(text.begin() + position, stop);
    const auto end = static_cast<std::size_t>(stop - text.begin());
    tokens_.push_back({PathToken::kString, StoreText(begin), position, end});
    return end;
}

}  // namespace fixtop
