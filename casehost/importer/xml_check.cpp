// SPDX-License-Identifier: Apache-2.0
#include "xml_check.h"

#include <algorithm>
#include <charconv>
#include <compare>
#include <cstdint>

#include "reading.h"

namespace fixtop::casehost::importer {

namespace {

constexpr std::string_view kWhite = " \t\r\n";
constexpr char kInvalid[] = "not well-formed (invalid token)";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsNameCharacter(char c) {
    const auto byte = static_cast<unsigned char>(c);
    const char lower = static_cast<char>(c | 0x20);
    return byte >= 0x80 || (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9') ||
           std::string_view("_:.-").find(c) != std::string_view::npos;
}

bool IsXmlCharacter(std::uint32_t code) {
    if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
    return code < 0xD800 || (code > 0xDFFF && code < 0xFFFE) || (code > 0xFFFF && code < 0x110000);
}

// Bytes of the character in front, 0 when there is none that XML allows.
std::size_t CharacterSize(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80) return IsXmlCharacter(lead) ? 1 : 0;
    const std::size_t size = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (size == 0 || size > text.size()) return 0;
    std::uint32_t code = lead & (0xFF >> (size + 1));
    for (std::size_t i = 1; i < size; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0) != 0x80) return 0;
        code = code << 6 | (byte & 0x3F);
    }
    constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    return code >= kSmallest[size] && IsXmlCharacter(code) ? size : 0;
}

bool IsKnownReference(std::string_view name) {
    if (!name.starts_with('#')) return ListHolds("amp|lt|gt|quot|apos", name);
    const bool hex = name.starts_with("#x");
    name.remove_prefix(hex ? 2 : 1);
    std::uint32_t code = 0;
    const auto [end, error] =
        std::from_chars(name.data(), name.data() + name.size(), code, hex ? 16 : 10);
    return error == std::errc() && end == name.data() + name.size() && IsXmlCharacter(code);
}

struct NameAndValue {
    std::string_view name;
    std::string_view value;

    auto operator<=>(const NameAndValue&) const = default;
};

class Check {
 public:
    Check(std::string_view document, Problems& problems, TagLines& lines)
        : document_(document), problems_(problems), lines_(lines) {}

    bool Run() {
        Take(kByteOrderMark);
        while (good_ && at_ < document_.size()) {
            token_ = at_;
            attributes_.clear();
            Next();
            Characters(document_.substr(token_, at_ - token_));
        }
        token_ = at_;
        if (good_ && !has_root_) Malformed("no element found");
        if (good_ && !open_.empty()) Malformed("an element is not closed");
        return good_;
    }

 private:
    void Next() {
        if (!Take("<")) return Text();
        if (Take("/")) return EndTag();
        if (Take("?")) {
            Instruction();
        } else if (Take("!--")) {
            if (TakeUntil("--"); !Take(">")) Malformed(kInvalid);
        } else if (Take("![CDATA[")) {
            if (open_.empty()) Malformed("text outside of the root element");
            TakeUntil("]]>");
        } else if (Take("!DOCTYPE")) {
            Fail("a document type declaration is not allowed; expected plain elements only");
        } else {
            return StartTag();
        }
        Count(1);
    }
    void Characters(std::string_view text) {
        while (good_ && !text.empty()) {
            const std::size_t size = CharacterSize(text);
            if (size == 0) MalformedAt(text, kInvalid);
            text.remove_prefix(size);
        }
    }
    void Text() {
        const std::size_t end = std::min(document_.find('<', at_), document_.size());
        const std::string_view text = document_.substr(at_, end - at_);
        at_ = end;
        if (open_.empty() && text.find_first_not_of(kWhite) != std::string_view::npos) {
            Malformed("text outside of the root element");
        }
        if (text.find("]]>") != std::string_view::npos) Malformed(kInvalid);
        References(text);
    }
    void Instruction() {
        const bool in_front = token_ <= kByteOrderMark.size() && !has_root_;
        const std::string_view target = TakeName();
        if (target == "xml" && in_front) return Declaration();
        const std::string_view text = TakeUntil("?>");
        const bool parted = text.empty() || kWhite.find(text[0]) != std::string_view::npos;
        if (target.empty() || !parted || EqualIgnoringCase(target, "xml")) Malformed(kInvalid);
    }
    void Declaration() {
        while (Attribute()) {
        }
        constexpr NameAndValue kVersion = {"version", "1.0"};
        if (attributes_.empty() || attributes_[0] != kVersion || !Take("?>")) {
            Malformed("XML declaration not well-formed");
        }
        for (const NameAndValue& each : attributes_) {
            if (!ListHolds("version|encoding|standalone", each.name)) {
                Malformed("XML declaration not well-formed");
            }
            const bool known =
                EqualIgnoringCase(each.value, "utf-8") || EqualIgnoringCase(each.value, "us-ascii");
            if (each.name == "encoding" && !known) Malformed("unknown encoding");
        }
    }
    void StartTag() {
        const std::string_view tag = TakeName();
        if (tag.empty()) return void(Malformed(kInvalid));
        if (open_.empty() && has_root_) return void(Malformed("junk after document element"));
        if (open_.size() >= kMaxXmlDepth) {
            Fail("elements are nested more than " + std::to_string(kMaxXmlDepth) +
                 " deep; a flowsheet needs less than 20 levels");
            return;
        }
        while (Attribute()) {
        }
        if (!Count(1)) return;
        std::sort(attributes_.begin(), attributes_.end());
        const auto twin = std::ranges::adjacent_find(attributes_, {}, &NameAndValue::name);
        if (twin != attributes_.end()) return void(Malformed("duplicate attribute"));
        lines_.Add(token_, Line(token_));
        has_root_ = true;
        if (Take("/>")) return;
        if (!Take(">")) Malformed(kInvalid);
        open_.push_back(tag);
    }
    // False when no further one follows.
    bool Attribute() {
        const std::size_t end_of_last = at_;
        SkipWhite();
        const bool parted = at_ != end_of_last;
        const std::string_view name = TakeName();
        if (name.empty()) return false;
        SkipWhite();
        bool well_formed = parted && Take("=");
        SkipWhite();
        const std::string_view quote = document_.substr(at_, 1);
        well_formed = well_formed && (quote == "\"" || quote == "'") && Take(quote);
        if (!well_formed) return Malformed(kInvalid);
        const std::string_view value = TakeUntil(quote);
        if (value.find('<') != std::string_view::npos) {
            return Malformed(kInvalid);
        }
        attributes_.push_back({name, value});
        return References(value) && Count(1);
    }
    void EndTag() {
        const std::string_view tag = TakeName();
        SkipWhite();
        if (open_.empty() || open_.back() != tag || !Take(">"))
            return void(Malformed("mismatched tag"));
        open_.pop_back();
    }
    bool References(std::string_view text) {
        for (std::size_t at = 0; (at = text.find('&', at)) != std::string_view::npos;) {
            const std::size_t end = std::min(text.find(';', at), text.size());
            if (end == text.size() || !IsKnownReference(text.substr(at + 1, end - at - 1))) {
                return MalformedAt(text.substr(at), "undefined entity");
            }
            at = end;
        }
        return good_;
    }
    // More pieces of text than these there can't be.
    bool Count(std::size_t nodes) {
        node_count_ += nodes;
        return node_count_ <= kMaxXmlNodes ||
               Fail("more than " + std::to_string(kMaxXmlNodes) +
                    " elements and attributes; expected a smaller flowsheet");
    }

    // 0 at the end.
    char Here() const { return at_ < document_.size() ? document_[at_] : '\0'; }
    bool Take(std::string_view text) {
        if (!document_.substr(at_).starts_with(text)) return false;
        at_ += text.size();
        return true;
    }
    std::string_view TakeName() {
        const std::size_t begin = at_;
        if (std::string_view("0123456789-.").find(Here()) != std::string_view::npos) return {};
        while (IsNameCharacter(Here())) ++at_;
        const std::string_view name = document_.substr(begin, at_ - begin);
        Characters(name);
        return good_ ? name : std::string_view();
    }
    std::string_view TakeUntil(std::string_view end) {
        const std::size_t begin = at_;
        const std::size_t found = document_.find(end, at_);
        if (found == std::string_view::npos) Malformed("unclosed token");
        at_ = good_ ? found + end.size() : document_.size();
        return document_.substr(begin, found - begin);
    }
    void SkipWhite() { at_ = std::min(document_.find_first_not_of(kWhite, at_), document_.size()); }

    bool Fail(const std::string& message) {
        if (!good_) return false;
        std::string path;
        for (const std::string_view tag : open_) (path += path.empty() ? "" : "/") += tag;
        problems_.ErrorAtLine(Line(token_), path, message);
        return good_ = false;
    }
    bool Malformed(const std::string& what) {
        return Fail("malformed XML: " + what +
                    "; expected a well-formed document with every element closed");
    }
    // At the beginning of a piece of the document.
    bool MalformedAt(std::string_view text, const std::string& what) {
        token_ = static_cast<std::size_t>(text.data() - document_.data());
        return Malformed(what);
    }
    std::size_t Line(std::size_t place) {
        const std::string_view passed = document_.substr(line_place_, place - line_place_);
        line_ += static_cast<std::size_t>(std::count(passed.begin(), passed.end(), '\n'));
        line_place_ = place;
        return line_;
    }

    const std::string_view document_;
    Problems& problems_;
    TagLines& lines_;
    std::size_t at_ = 0;
    std::size_t token_ = 0;  // where the piece begins that is looked at
    std::size_t line_ = 1;   // at line_place_
    std::size_t line_place_ = 0;
    std::size_t node_count_ = 0;
    std::vector<std::string_view> open_;
    std::vector<NameAndValue> attributes_;  // of the tag that is looked at
    bool has_root_ = false;
    bool good_ = true;
};

}  // namespace

void TagLines::Add(std::size_t place, std::size_t line) {
    if (begins_.empty() || begins_.back().line != line) begins_.push_back({place, line});
}

std::size_t TagLines::At(std::size_t place) const {
    const auto behind = std::ranges::upper_bound(begins_, place, {}, &Begin::place);
    return behind == begins_.begin() ? 0 : std::prev(behind)->line;
}

bool CheckXml(std::string_view document, Problems& problems, TagLines& lines) {
    return Check(document, problems, lines).Run();
}

}  // namespace fixtop::casehost::importer
