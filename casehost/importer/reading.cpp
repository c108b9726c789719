// SPDX-License-Identifier: Apache-2.0
#include "reading.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace fixtop::casehost::importer {

namespace {

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsNonFiniteWord(std::string_view text) {
    return text == "NaN" || text == "Infinity" || text == "-Infinity";
}

// No error for a text that is a finite number as a whole.
std::errc Parse(std::string_view text, double& value) {
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (stop != end) return std::errc::invalid_argument;
    if (error == std::errc() && !std::isfinite(value)) return std::errc::invalid_argument;
    return error;
}

// Long texts would bury the message.
std::string Quoted(std::string_view text) {
    constexpr std::size_t kLongest = 40;
    std::string quoted(1, '\'');
    quoted += text.substr(0, kLongest);
    quoted += text.size() > kLongest ? "...'" : "'";
    return quoted;
}

}  // namespace

std::string Problems::Place(std::size_t line, const std::string& path) const {
    std::string place = Place() + " line " + std::to_string(line);
    if (!path.empty()) place += ", " + path;
    return place;
}

void Problems::AddError(std::string where, std::string message) {
    ++error_count_;
    if (errors_.size() < kMaxProblems) errors_.push_back({std::move(where), std::move(message)});
}

void Problems::Remark(const XmlNode& node, const std::string& message) {
    if (remarks_.size() < kMaxProblems) {
        remarks_.push_back({Place(node.Line(), node.Path()), message});
    }
}

std::vector<CaseProblem> Problems::Take() {
    if (!Failed()) return std::move(remarks_);
    if (error_count_ > errors_.size()) {
        errors_.push_back({Place(), "and " + std::to_string(error_count_ - errors_.size()) +
                                        " more problems of this kind"});
    }
    return std::move(errors_);
}

std::shared_ptr<const VariableSpec> SpecPool::Share(VariableSpec spec) {
    constexpr std::size_t kMostVariants = 64;
    auto& variants = by_name_[spec.name];
    for (const auto& known : variants) {
        if (*known == spec) return known;
    }
    auto shared = std::make_shared<const VariableSpec>(std::move(spec));
    if (variants.size() < kMostVariants) variants.push_back(shared);
    return shared;
}

bool IsNumber(std::string_view text) {
    double value = 0.0;
    return IsNonFiniteWord(text) || Parse(text, value) == std::errc();
}

std::optional<double> ParseNumber(Reading& reading, XmlNode node, std::string_view text) {
    if (IsNonFiniteWord(text)) return std::nullopt;
    double value = 0.0;
    const std::errc error = Parse(text, value);
    if (error == std::errc()) return value;
    const char* expected = error == std::errc::result_out_of_range
                               ? "expected a number of double precision, found "
                               : "expected a number, found ";
    reading.problems.Error(node, expected + Quoted(text));
    return std::nullopt;
}

std::vector<std::optional<double>> ParseNumbers(Reading& reading, XmlNode node,
                                                std::string_view text, const char* separators) {
    std::vector<std::optional<double>> numbers;
    for (bool more = !text.empty(); more;) {
        const std::size_t end = std::min(text.find_first_of(separators), text.size());
        std::string_view word = text.substr(0, end);
        word.remove_prefix(std::min(word.find_first_not_of(' '), word.size()));
        numbers.push_back(ParseNumber(reading, node, word));
        more = end < text.size();
        text.remove_prefix(more ? end + 1 : end);
    }
    return numbers;
}

std::optional<std::size_t> FindCompound(Reading& reading, XmlNode node, std::string_view name) {
    const auto found = reading.compound_index.find(std::string(name));
    if (found != reading.compound_index.end()) return found->second;
    reading.problems.Error(node,
                           "expected a compound of the case, found '" + std::string(name) + "'");
    return std::nullopt;
}

std::optional<double> ReadNumber(Reading& reading, XmlNode leaf) {
    if (!leaf) return std::nullopt;
    return ParseNumber(reading, leaf, leaf.Text());
}

bool ReadFlag(XmlNode leaf) {
    return EqualIgnoringCase(leaf.Text(), "true");
}

std::string_view LastWord(std::string_view dotted) {
    const std::size_t dot = dotted.rfind('.');
    return dot == std::string_view::npos ? dotted : dotted.substr(dot + 1);
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return Lower(x) == Lower(y); });
}

bool ListHolds(std::string_view list, std::string_view word) {
    while (true) {
        const std::size_t bar = list.find('|');
        if (list.substr(0, bar) == word) return true;
        if (bar == std::string_view::npos) return false;
        list.remove_prefix(bar + 1);
    }
}

}  // namespace fixtop::casehost::importer
