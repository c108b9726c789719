// SPDX-License-Identifier: Apache-2.0
#include "json/json_tree.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace fixtop::casehost::json {

namespace {

// The parser reads through this, so that its place in the text is known at every event.
class Reader {
 public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    Reader(const char* at, const char** shared) : at_(at), shared_(shared) {}
    reference operator*() const { return *at_; }
    Reader& operator++() {
        *shared_ = ++at_;
        return *this;
    }
    bool operator==(const Reader& other) const { return at_ == other.at_; }
    bool operator!=(const Reader& other) const { return at_ != other.at_; }

 private:
    const char* at_;
    const char** shared_;
};

constexpr std::size_t kMostQuoted = 80;

}  // namespace

class TreeBuilder : public nlohmann::json_sax<nlohmann::json> {
 public:
    TreeBuilder(Tree& tree, const char* begin) : tree_(tree), begin_(begin), at_(begin) {}

    const char** Place() { return &at_; }

    bool null() override { return Good(Leaf(JsonNode::Kind::null)); }
    bool boolean(bool value) override {
        JsonNode& node = Leaf(JsonNode::Kind::boolean);
        node.flag = value;
        return Good(node);
    }
    bool number_integer(number_integer_t value) override {
        return Number(static_cast<double>(value));
    }
    bool number_unsigned(number_unsigned_t value) override {
        return Number(static_cast<double>(value));
    }
    bool number_float(number_float_t value, const string_t&) override { return Number(value); }
    bool string(string_t& value) override {
        JsonNode& node = Leaf(JsonNode::Kind::text);
        node.text = Keep(value);
        return Whole(node, value) && Good(node);
    }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return Open(JsonNode::Kind::object); }
    bool start_array(std::size_t) override { return Open(JsonNode::Kind::array); }
    bool end_object() override {
        const bool good = CheckDuplicates(*open_);
        Close();
        return good;
    }
    bool end_array() override {
        Close();
        return true;
    }
    bool key(string_t& name) override {
        key_ = Keep(name);
        return Whole(*open_, name);
    }
    bool parse_error(std::size_t position, const std::string&,
                     const nlohmann::detail::exception& error) override {
        tree_.ReportAt(position > 0 ? position - 1 : 0, open_ ? Tree::PathOf(*open_) : "",
                       Plain(error.what()));
        return false;
    }

 private:
    // The parser's own place is said better by ours; what may stand there it does not say of a word
    // or number that it does not know.
    static std::string Plain(const std::string& what) {
        const std::size_t overflow = what.find("number overflow ");
        if (overflow != std::string::npos) {
            return what.substr(overflow, kMostQuoted) + "; expected a number of double precision";
        }
        const std::size_t syntax = what.find("syntax error ");
        std::string plain = syntax == std::string::npos ? what : what.substr(syntax);
        if (plain.find("invalid literal") != std::string::npos &&
            plain.find("; expected ") == std::string::npos) {
            plain += "; expected a text in quotes, a finite number, true, false, null, [ or {";
        }
        return plain;
    }
    std::string_view Keep(const std::string& text) { return *tree_.texts_.insert(text).first; }
    bool Number(double value) {
        JsonNode& node = Leaf(JsonNode::Kind::number);
        node.number = value;
        return Good(node);
    }
    // Clients are told names and texts up to the first NUL, so that two names could look the same.
    bool Whole(const JsonNode& node, const std::string& text) {
        if (text.find('\0') == std::string::npos) return true;
        tree_.Report(node, "a text with a NUL in it; expected one without");
        return false;
    }
    // Whether there is room for more.
    bool Good(const JsonNode& node) {
        if (tree_.nodes_.size() <= kMaxNodes) return true;
        tree_.Report(node, "more than " + std::to_string(kMaxNodes) + " values");
        return false;
    }
    JsonNode& Leaf(JsonNode::Kind kind) {
        JsonNode& node = tree_.nodes_.emplace_back();
        node.kind = kind;
        node.offset = static_cast<std::size_t>(at_ - begin_);
        node.parent = open_;
        if (!open_) {
            tree_.root_ = &node;
            return node;
        }
        if (open_->kind == JsonNode::Kind::object) node.key = key_;
        (open_->last ? open_->last->next : open_->first) = &node;
        open_->last = &node;
        return node;
    }
    bool Open(JsonNode::Kind kind) {
        open_ = &Leaf(kind);
        if (++depth_ <= kMaxDepth) return Good(*open_);
        tree_.Report(*open_, "nested deeper than " + std::to_string(kMaxDepth) + " levels");
        return false;
    }
    void Close() {
        open_ = open_->parent;
        --depth_;
    }
    // Keys are kept once each, so equal names have equal addresses.
    bool CheckDuplicates(const JsonNode& object) {
        keys_.clear();
        for (const JsonNode* each = object.first; each; each = each->next)
            keys_.push_back(each->key.data());
        std::sort(keys_.begin(), keys_.end());
        if (std::adjacent_find(keys_.begin(), keys_.end()) == keys_.end()) return true;
        std::unordered_set<std::string_view> seen;
        const JsonNode* member = object.first;
        while (seen.insert(member->key).second) member = member->next;
        tree_.Report(*member,
                     "the name \"" + std::string(member->key) + "\" stands twice in one object");
        return false;
    }

    Tree& tree_;
    const char* begin_;
    const char* at_;
    JsonNode* open_ = nullptr;
    std::string_view key_;
    std::vector<const char*> keys_;  // of the object that is looked at
    int depth_ = 0;
};

const JsonNode* JsonNode::Find(std::string_view name) const {
    if (kind != Kind::object) return nullptr;
    for (const JsonNode* member = first; member; member = member->next) {
        if (member->key == name) return member;
    }
    return nullptr;
}

std::size_t JsonNode::Count() const {
    std::size_t count = 0;
    for (const JsonNode* child = first; child; child = child->next) ++count;
    return count;
}

const JsonNode& OrNowhere(const JsonNode* node) {
    static const JsonNode nowhere;
    return node ? *node : nowhere;
}

Tree::Tree(std::string file, std::string_view text) : file_(std::move(file)), text_(text) {
    TreeBuilder builder(*this, text.data());
    const Reader begin(text.data(), builder.Place());
    const Reader end(text.data() + text.size(), builder.Place());
    const bool good = nlohmann::json::sax_parse(begin, end, &builder);
    if (!good && problems_.empty()) ReportAt(0, "", "not a JSON text");
    // The parser takes a NUL for the end; what stands behind it would be lost by the next save.
    const std::size_t nul = text.find('\0');
    if (good && nul != std::string_view::npos) {
        ReportAt(nul + 1, "", "a NUL byte; expected the end of the text");
    }
}

void Tree::ReportAt(std::size_t offset, const std::string& path, const std::string& message) {
    if (Full()) return;
    const std::string line = std::to_string(LineOf(offset));
    problems_.push_back({file_ + ":" + line, (path.empty() ? "" : path + ": ") + message});
}

// A node's offset lies behind its last character read, which for a number may be a line end.
std::size_t Tree::LineOf(std::size_t offset) const {
    std::size_t end = std::min(offset, text_.size());
    if (end > 0 && text_[end - 1] == '\n') --end;
    return 1 + static_cast<std::size_t>(std::count(text_.begin(), text_.begin() + end, '\n'));
}

std::string Tree::PathOf(const JsonNode& node) {
    if (!node.parent) return "/";
    std::string step;
    if (node.parent->kind == JsonNode::Kind::object) {
        for (char c : node.key) step += c == '~' ? "~0" : c == '/' ? "~1" : std::string(1, c);
    } else {
        std::size_t index = 0;
        for (const JsonNode* each = node.parent->first; each != &node; each = each->next) ++index;
        step = std::to_string(index);
    }
    return (node.parent->parent ? PathOf(*node.parent) : "") + "/" + step;
}

std::string Tree::Describe(const JsonNode& node) {
    if (node.kind == JsonNode::Kind::text)
        return "\"" + std::string(node.text.substr(0, 40)) + "\"";
    if (node.kind == JsonNode::Kind::boolean) return node.flag ? "true" : "false";
    constexpr const char* kWords[] = {"null", "", "a number", "", "an array", "an object"};
    return kWords[static_cast<std::size_t>(node.kind)];
}

}  // namespace fixtop::casehost::json
