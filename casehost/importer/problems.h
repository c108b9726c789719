// SPDX-License-Identifier: Apache-2.0
#pragma once

// Faults and remarks met while one file is read. After kMaxProblems the rest is only counted.

#include <cstddef>
#include <utility>

#include "casehost/case_data.h"

namespace fixtop::casehost::importer {

class XmlNode;

class Problems {
 public:
    static constexpr std::size_t kMaxProblems = 100;

    explicit Problems(std::string file) : file_(std::move(file)) {}

    const std::string& File() const { return file_; }
    // The document inside the file, named in all later problems.
    void EnterDocument(const std::string& entry) { document_ = entry; }

    void Error(const std::string& message) { AddError(Place(), message); }
    void Error(const XmlNode& node, const std::string& message);
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

}  // namespace fixtop::casehost::importer
