// SPDX-License-Identifier: Apache-2.0
#include "json/json_stream.h"

#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>

namespace fixtop::casehost::json {

namespace {

constexpr std::size_t kWindow = std::size_t{1} << 16;
// Objects of more members are searched for names that stand twice by sorting.
constexpr std::size_t kFew = 12;

bool IsBlank(char c) {
    return c == ' ' || c == '\n' || c == '\r' || c == '\t';
}
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
// A character that stands for itself inside of quotes and is ASCII.
bool IsPlain(signed char c) {
    return c >= ' ' && c != '"' && c != '\\';
}

}  // namespace

JsonNode& JsonStream::Store::Make() {
    if (used_ == blocks_.size() * kBlock) blocks_.push_back(std::make_unique<JsonNode[]>(kBlock));
    JsonNode& node = blocks_[used_ / kBlock][used_ % kBlock];
    ++used_;
    return node = JsonNode();
}

void JsonStream::Store::Clear() {
    used_ = 0;
    texts_.clear();
}

bool JsonStream::Take(char c) {
    while (!SkipBlanks()) {
        if (!Refill(at_)) return false;
    }
    if (*at_ != c) return false;
    ++at_;
    return true;
}

bool JsonStream::AtEnd() {
    while (!SkipBlanks()) {
        if (!Refill(at_)) return true;
    }
    return false;
}

bool JsonStream::Name(std::string_view& name) {
    const JsonNode* node = Kept(0);
    if (!node || node->kind != JsonNode::Kind::text) return false;
    name = node->text;
    return Take(':');
}

const JsonNode* JsonStream::Item(int depth) {
    return Read(item_, depth);
}

JsonNode* JsonStream::Kept(int depth) {
    return Read(kept_, depth);
}

// What ends before the text that is at hand does is read anew when there is more.
JsonNode* JsonStream::Read(Store& store, int depth) {
    store_ = &store;
    const std::size_t nodes = nodes_;
    const char* begin = at_;
    while (true) {
        if (&store == &item_) item_.Clear();
        nodes_ = nodes;
        ran_out_ = false;
        at_ = begin;
        JsonNode& node = store.Make();
        if (Value(depth, node)) return &node;
        if (!ran_out_ || !Refill(begin)) return nullptr;
    }
}

bool JsonStream::Value(int depth, JsonNode& node) {
    if (!SkipBlanks()) return RanOut();
    if (++nodes_ > kMaxNodes) return false;
    using Kind = JsonNode::Kind;
    switch (*at_) {
        case '{':
            return Members(depth + 1, node);
        case '[':
            return Elements(depth + 1, node);
        case '"':
            node.kind = Kind::text;
            return Text(node.text);
        case 't':
        case 'f':
            node.kind = Kind::boolean;
            node.flag = *at_ == 't';
            return Word(node.flag ? "true" : "false");
        case 'n':
            return Word("null");
        default:
            node.kind = Kind::number;
            return Number(node.number);
    }
}

template <class ReadItem>
bool JsonStream::Items(JsonNode& list, char close, ReadItem read) {
    ++at_;
    if (!SkipBlanks()) return RanOut();
    if (*at_ == close) {
        ++at_;
        return true;
    }
    while (true) {
        JsonNode& node = store_->Make();
        node.parent = &list;
        if (!read(node)) return false;
        (list.last ? list.last->next : list.first) = &node;
        list.last = &node;
        if (!SkipBlanks()) return RanOut();
        const char c = *at_++;
        if (c == close) return true;
        if (c != ',') return false;
    }
}

bool JsonStream::Members(int depth, JsonNode& object) {
    if (depth > kMaxDepth) return false;
    object.kind = JsonNode::Kind::object;
    const auto member = [&](JsonNode& node) {
        if (!SkipBlanks()) return RanOut();
        if (*at_ != '"' || !Text(node.key)) return false;
        if (!SkipBlanks()) return RanOut();
        return *at_++ == ':' && Value(depth, node);
    };
    return Items(object, '}', member) && NamesDiffer(object);
}

bool JsonStream::Elements(int depth, JsonNode& array) {
    if (depth > kMaxDepth) return false;
    array.kind = JsonNode::Kind::array;
    return Items(array, ']', [&](JsonNode& node) { return Value(depth, node); });
}

bool JsonStream::NamesDiffer(const JsonNode& object) {
    std::size_t count = 0;
    for (const JsonNode* each = object.first; each; each = each->next) {
        if (++count > kFew) break;
        for (const JsonNode* other = object.first; other != each; other = other->next) {
            if (other->key == each->key) return false;
        }
    }
    if (count <= kFew) return true;
    std::vector<std::string_view> names;
    for (const JsonNode* each = object.first; each; each = each->next) names.push_back(each->key);
    std::sort(names.begin(), names.end());
    return std::adjacent_find(names.begin(), names.end()) == names.end();
}

bool JsonStream::Text(std::string_view& text) {
    const char* const begin = at_ + 1;
    const char* at = begin;
    while (at != end_ && IsPlain(*at)) ++at;
    if (at == end_) return RanOut();
    if (*at != '"') return OddText(text);
    text = std::string_view(begin, static_cast<std::size_t>(at - begin));
    if (store_ == &kept_) text = kept_.Keep(std::string(text));
    at_ = at + 1;
    return true;
}

// One with escapes, or characters beyond ASCII, whose rules are many.
bool JsonStream::OddText(std::string_view& text) {
    const char* end = at_ + 1;
    while (end != end_ && *end != '"') {
        if (*end == '\\' && ++end == end_) break;
        ++end;
    }
    if (end == end_) return RanOut();
    const auto read = nlohmann::json::parse(at_, ++end, nullptr, false);
    if (!read.is_string()) return false;
    text = store_->Keep(read.get<std::string>());
    at_ = end;
    // Clients are told texts up to the first NUL.
    return text.find('\0') == std::string_view::npos;
}

bool JsonStream::Number(double& number) {
    const char* at = at_;
    const auto digits = [&] {
        const char* const begin = at;
        while (at != end_ && IsDigit(*at)) ++at;
        return at != begin;
    };
    if (at != end_ && *at == '-') ++at;
    const bool zero = at != end_ && *at == '0';
    if (zero) ++at;
    bool good = zero || digits();
    bool whole = true;
    if (at != end_ && *at == '.') {
        whole = false;
        ++at;
        good = good && digits();
    }
    if (at != end_ && (*at == 'e' || *at == 'E')) {
        whole = false;
        ++at;
        if (at != end_ && (*at == '+' || *at == '-')) ++at;
        good = good && digits();
    }
    // Whatever stands at the end of the text that is at hand may go on behind it.
    if (at == end_ && in_) return RanOut();
    if (!good || std::from_chars(at_, at, number).ec != std::errc()) return false;
    if (whole && number == 0) number = 0;  // a whole number has no sign at zero
    at_ = at;
    return true;
}

bool JsonStream::Word(std::string_view word) {
    const std::size_t room = static_cast<std::size_t>(end_ - at_);
    const std::string_view found(at_, std::min(room, word.size()));
    if (found == word) {
        at_ += word.size();
        return true;
    }
    return room < word.size() ? RanOut() : false;
}

bool JsonStream::SkipBlanks() {
    while (at_ != end_ && IsBlank(*at_)) ++at_;
    return at_ != end_;
}

bool JsonStream::Refill(const char*& from) {
    if (!in_) return false;
    const std::size_t kept = static_cast<std::size_t>(end_ - from);
    if (kept > 0) window_.replace(0, window_.size(), std::string(from, kept));
    window_.resize(std::max(kWindow, 2 * kept));
    in_->read(window_.data() + kept, static_cast<std::streamsize>(window_.size() - kept));
    const auto count = static_cast<std::size_t>(in_->gcount());
    if (count == 0) in_ = nullptr;
    window_.resize(kept + count);
    from = at_ = window_.data();
    end_ = at_ + window_.size();
    // Once more at the end, where a number may stand.
    return true;
}

}  // namespace fixtop::casehost::json
