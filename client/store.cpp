// SPDX-License-Identifier: Apache-2.0
// Stores, and what became of them.

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

#include "fixtop/client/error.h"
#include "fixtop/client/hold.h"
#include "fixtop/client/node.h"
#include "texts.h"

namespace fixtop::client {

namespace {

constexpr char kNotStored[] = "Value not stored";

// The whole text as a number, with a point whatever the locale has.
std::optional<double> NumberIn(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end || !std::isfinite(number)) return std::nullopt;
    return number;
}

// What a unit that is typed without a blank may begin with; "1_000" and "1,5" have none.
bool BeginsUnit(char letter) {
    const char small = static_cast<char>(letter | 0x20);
    return (small >= 'a' && small <= 'z') || letter == '%' ||
           static_cast<unsigned char>(letter) > 0x7F;
}

// Where the number that begins at `begin` ends: at a blank, or at a unit.
std::size_t NumberEnd(const std::string& text, std::size_t begin, std::size_t blank) {
    const std::size_t digits = begin + (text.compare(begin, 1, "+") == 0);
    const char* const end = text.data() + blank;
    double ignored = 0;
    const auto [stop, error] = std::from_chars(text.data() + digits, end, ignored);
    const bool is_unit = error == std::errc() && stop != end && BeginsUnit(*stop);
    return is_unit ? static_cast<std::size_t>(stop - text.data()) : blank;
}

// "30 C" and "30C" in number and unit; the second is empty without one.
std::pair<std::string, std::string> CutUnit(const std::string& text) {
    constexpr char kBlanks[] = " \t";
    const std::size_t begin = std::min(text.find_first_not_of(kBlanks), text.size());
    const std::size_t blank = std::min(text.find_first_of(kBlanks, begin), text.size());
    const std::size_t end = NumberEnd(text, begin, blank);
    const std::size_t unit = std::min(text.find_first_not_of(kBlanks, end), text.size());
    return {text.substr(begin, end - begin),
            text.substr(unit, text.find_last_not_of(kBlanks) + 1 - unit)};
}

double NumberOf(const Node& node) {
    return node.Attribute("value").AsDouble();
}

bool IsNear(double a, double b) {
    constexpr double kRounding = 1e-9;
    return std::abs(a - b) <= kRounding * std::max(std::abs(a), std::abs(b));
}

// An element of an array. The tree does not tell whether a fraction was taken, for it is changed by
// being taken: all fractions are divided by their sum.
class Element {
 public:
    explicit Element(const Node& shown) : shown_(shown), node_(NodeOfCase(shown)) {
        const auto array = node_.Parent();
        is_element_ = array && array->Type() == "Array";
        if (!is_element_) return;
        array->ForEachChild([this](const Child& child) {
            if (!(child.node == node_)) others_ += NumberOf(child.node);
            return true;
        });
    }

    bool Took(double stored) const {
        if (!is_element_) return true;
        const double now = NumberOf(shown_);
        if (IsNear(now, stored)) return true;
        if (now == 0) return false;
        const double in_case = stored * NumberOf(node_) / now;
        return IsNear(NumberOf(node_), in_case / (in_case + others_));
    }

 private:
    const Node& shown_;
    Node node_;
    bool is_element_ = false;
    double others_ = 0;  // what the other elements are together
};

// The beginning of a text that is too long to be read in a message.
std::string Shortened(const std::string& text) {
    constexpr std::size_t kMost = 60;
    std::size_t end = kMost;
    if (text.size() <= kMost) return text;
    // Whole characters.
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
    return text.substr(0, end) + "... (" + std::to_string(text.size()) + " bytes)";
}

}  // namespace

Typed TypedIn(const Node& node, const std::string& text, const std::string& unit) {
    const std::string type = node.Type();
    if (auto value = TypedValue(type, text)) return {std::move(*value), unit};
    const auto [number, behind] = CutUnit(text);
    auto value = TypedValue(type, number);
    if (!value || behind.empty()) throw Refused(node.Path(), NoNumber(text));
    if (!unit.empty() && unit != behind) {
        throw Refused(node.Path(), "two units: " + Shortened(behind) + " and " + Shortened(unit));
    }
    return {std::move(*value), behind};
}

std::optional<FIValue> TypedValue(const std::string& type, const std::string& text) {
    if (type != "Real") return FIValue(text.c_str());
    if (text.empty()) return FIValue();
    if (const auto number = NumberIn(text)) return FIValue::OfReal(*number);
    return std::nullopt;
}

std::string NoNumber(const std::string& text) {
    return "not a number: " + Shortened(text);
}

void Node::Store(const FIValue& value, const std::string& unit) const {
    if (!unit.empty()) ShowIn(unit);
    const Element element(*this);
    SetAttribute("value", value);
    const bool is_number = value.IsNumber() || value.IsNull();
    if (is_number && !element.Took(value.AsDouble())) throw Refused(Path(), kNotStored);
}

void Node::Store(double number, const std::string& unit) const {
    Store(FIValue::OfReal(number), unit);
}

void Node::Store(const std::string& text, const std::string& unit) const {
    const Typed typed = TypedIn(*this, text, unit);
    Store(typed.value, typed.unit);
}

}  // namespace fixtop::client
