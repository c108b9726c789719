// SPDX-License-Identifier: Apache-2.0
#pragma once

// Json: a value as the commands write it: null, a flag, a number, a text, a list, or a record whose
// members keep the order in which they were named. A record that can't be finished because memory
// runs out can still be dropped: dropping it takes none.

#include <concepts>
#include <string>
#include <vector>

namespace fixtop {

class Json {
 public:
    Json() = default;
    Json(std::nullptr_t) {}
    Json(bool flag) : text_(flag ? "true" : "false") {}
    Json(std::integral auto number) : text_(std::to_string(number)) {}
    // The shortest digits that lead back to the number; null when it has none.
    Json(double number);
    // Bytes that are no UTF-8 are replaced.
    Json(const std::string& text);
    Json(const char* text) : Json(std::string(text)) {}

    Json(const std::vector<std::string>& texts)
        : kind_(Kind::kList), values_(texts.begin(), texts.end()) {}

    static Json array() { return Json(Kind::kList); }
    static Json object() { return Json(Kind::kRecord); }

    // The member of this name, null when it is new; null becomes a record by it.
    Json& operator[](const std::string& name);
    // Null becomes a list by it.
    void push_back(Json value);

    bool empty() const { return values_.empty(); }

    // With a line for each value, indented by `indent` blanks a level, or below 0 on one line.
    std::string Text(int indent) const;

 private:
    enum class Kind { kPlain, kList, kRecord };

    explicit Json(Kind kind) : kind_(kind) {}

    void Write(std::string& out, int indent, int depth) const;

    Kind kind_ = Kind::kPlain;
    std::string text_ = "null";       // of a plain value, as it is written
    std::vector<std::string> names_;  // of a record, as they are written
    std::vector<Json> values_;
};

}  // namespace fixtop
