// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the readers of one file share, and the way a number comes out of an element.

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "casehost/case_data.h"
#include "file_units.h"
#include "xml_tree.h"

namespace fixtop::casehost::importer {

// Faults and remarks met while one file is read. After kMaxProblems the rest is only counted.
class Problems {
 public:
    static constexpr std::size_t kMaxProblems = 100;

    explicit Problems(std::string file) : file_(std::move(file)) {}

    const std::string& File() const { return file_; }
    // The document inside the file, named in all later problems.
    void EnterDocument(const std::string& entry) { document_ = entry; }

    void Error(const std::string& message) { AddError(Place(), message); }
    void Error(const XmlNode& node, const std::string& message) {
        AddError(Place(node.Line(), node.Path()), message);
    }
    void ErrorAtLine(std::size_t line, const std::string& path, const std::string& message) {
        AddError(Place(line, path), message);
    }
    void Remark(const XmlNode& node, const std::string& message);

    bool Failed() const { return error_count_ > 0; }
    // The errors when there are any, else the remarks.
    std::vector<CaseProblem> Take();

 private:
    std::string Place() const { return document_.empty() ? file_ : file_ + " (" + document_ + ")"; }
    std::string Place(std::size_t line, const std::string& path) const;
    void AddError(std::string where, std::string message);

    std::string file_;
    std::string document_;
    std::size_t error_count_ = 0;
    std::vector<CaseProblem> errors_;
    std::vector<CaseProblem> remarks_;
};

// Hands out one shared description for equal ones.
class SpecPool {
 public:
    std::shared_ptr<const VariableSpec> Share(VariableSpec spec);

 private:
    std::unordered_map<std::string, std::vector<std::shared_ptr<const VariableSpec>>> by_name_;
};

struct Reading {
    // More values than any flowsheet that fits the document's limits; keeps a small document that
    // multiplies compounds, phases and streams from filling the memory.
    static constexpr std::size_t kMaxValues = 10'000'000;

    explicit Reading(std::string file) : problems(std::move(file)) {}

    Problems problems;
    SpecPool specs;
    std::size_t value_count = 0;
    std::vector<std::string> compounds;
    std::unordered_map<std::string, std::size_t> compound_index;
    std::unordered_map<std::string, XmlNode> reactions;  // by id, filled when they are sought
};

// Whether ParseNumber takes the text: a finite number, "NaN" or an infinity as the file writes it.
// A name such as "nan" or "inf" is none.
bool IsNumber(std::string_view text);
// Null for NaN, for an infinite number and, as a problem at `node`, for a text that is no number.
std::optional<double> ParseNumber(Reading& reading, XmlNode node, std::string_view text);
// Numbers parted by any of the separators, with blanks before them; none for an empty text.
std::vector<std::optional<double>> ParseNumbers(Reading& reading, XmlNode node,
                                                std::string_view text, const char* separators);
// Index of a compound of the case. A name that is none is a problem at `node`, and null.
std::optional<std::size_t> FindCompound(Reading& reading, XmlNode node, std::string_view name);
// The text of an element; null as well when there is no element.
std::optional<double> ReadNumber(Reading& reading, XmlNode leaf);
bool ReadFlag(XmlNode leaf);
// The text after the last dot.
std::string_view LastWord(std::string_view dotted);
bool EqualIgnoringCase(std::string_view a, std::string_view b);
// A word of a list separated by '|'.
bool ListHolds(std::string_view list, std::string_view word);

}  // namespace fixtop::casehost::importer
