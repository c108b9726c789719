// SPDX-License-Identifier: Apache-2.0
#include "json/json_text.h"

#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

#include "casehost/case_data.h"

namespace fixtop::casehost::json {

namespace {

constexpr std::size_t kPiece = std::size_t{1} << 18;

}  // namespace

void JsonText::Line(int depth, bool& first) {
    if (!first) out_ += ',';
    first = false;
    Break(depth);
    if (!taker_ || out_.size() < kPiece) return;
    taker_(out_);
    out_.clear();
}

void JsonText::Break(int depth) {
    out_ += '\n';
    out_.append(std::size_t{2} * depth, ' ');
}

void JsonText::Text(std::string_view text) {
    bool plain = true;
    for (char c : text) plain = plain && c >= ' ' && c != '"' && c != '\\' && c < 0x7f;
    if (plain) {
        out_ += '"';
        out_ += text;
        out_ += '"';
    } else {
        using Json = nlohmann::json;
        out_ += Json(std::string(text)).dump(-1, ' ', false, Json::error_handler_t::replace);
    }
}

void JsonText::Number(double number) {
    if (number == kEmpty || !(number - number == 0)) {
        out_ += "null";
        return;
    }
    // A reader takes "-0" for a whole number, which has no sign at zero.
    if (number == 0 && std::signbit(number)) {
        out_ += "-0.0";
        return;
    }
    char buffer[40];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number).ptr;
    out_.append(buffer, end);
}

}  // namespace fixtop::casehost::json
