// SPDX-License-Identifier: Apache-2.0
#pragma once

// JsonText: JSON as case files write it, indented by two, numbers in their shortest exact form.

#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace fixtop::casehost::json {

class JsonText {
 public:
    // What takes the text piece by piece, where it is not kept whole.
    using Taker = std::function<void(std::string_view piece)>;

    JsonText() = default;
    explicit JsonText(Taker taker) : taker_(std::move(taker)) {}
    // Starts a line for a member or element; `first` ones stand without a comma before them.
    void Line(int depth, bool& first);
    // Starts a line for a closing bracket.
    void Break(int depth);
    void Key(std::string_view name) {
        Text(name);
        out_ += ": ";
    }
    // A further member on the same line.
    void Member(std::string_view name) {
        out_ += ", ";
        Key(name);
    }
    // The same with their value: a text, a number, a flag or an array of these on one line.
    template <class Value>
    void Key(std::string_view name, const Value& value) {
        Key(name);
        Put(value);
    }
    template <class Value>
    void Member(std::string_view name, const Value& value) {
        Raw(", ");
        Key(name, value);
    }
    void Text(std::string_view text);
    // The empty text is null.
    void TextOrNull(std::string_view text) { text.empty() ? Raw("null") : Text(text); }
    // Empty and endless numbers are null.
    void Number(double number);
    void Integer(long number) { out_ += std::to_string(number); }
    void Flag(bool flag) { out_ += flag ? "true" : "false"; }
    // As it stands.
    void Raw(std::string_view text) { out_ += text; }

    // The text, or the rest of it that nobody took.
    std::string Take() { return std::move(out_); }

 private:
    template <class Value>
    void Put(const Value& value) {
        if constexpr (std::is_same_v<Value, bool>) {
            Flag(value);
        } else if constexpr (std::is_integral_v<Value>) {
            Integer(static_cast<long>(value));
        } else if constexpr (std::is_floating_point_v<Value>) {
            Number(value);
        } else {
            Text(value);
        }
    }
    template <class Value>
    void Put(const std::vector<Value>& values);

    std::string out_;
    Taker taker_;
};

// Items between brackets such as "[]", all on one line.
template <class Items, class Write>
void WriteLine(JsonText& text, std::string_view brackets, const Items& items, Write write) {
    text.Raw(brackets.substr(0, 1));
    std::string_view comma;
    for (const auto& each : items) {
        text.Raw(std::exchange(comma, ", "));
        write(each);
    }
    text.Raw(brackets.substr(1));
}

template <class Value>
void JsonText::Put(const std::vector<Value>& values) {
    WriteLine(*this, "[]", values, [this](const Value& value) { Put(value); });
}

// The same with a line for each at `depth` plus one.
template <class Items, class Write>
void WriteLines(JsonText& text, std::string_view brackets, const Items& items, int depth,
                Write write) {
    text.Raw(brackets.substr(0, 1));
    bool first = true;
    for (const auto& each : items) {
        text.Line(depth + 1, first);
        write(each);
    }
    if (!first) text.Break(depth);
    text.Raw(brackets.substr(1));
}

}  // namespace fixtop::casehost::json
