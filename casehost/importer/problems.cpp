// SPDX-License-Identifier: Apache-2.0
#include "problems.h"

#include "xml_tree.h"

namespace fixtop::casehost::importer {

std::string Problems::Place(std::size_t line, const std::string& path) const {
    std::string place = Place() + " line " + std::to_string(line);
    if (!path.empty()) place += ", " + path;
    return place;
}

void Problems::AddError(std::string where, std::string message) {
    ++error_count_;
    if (errors_.size() < kMaxProblems) errors_.push_back({std::move(where), std::move(message)});
}

void Problems::Error(const XmlNode& node, const std::string& message) {
    AddError(Place(node.Line(), node.Path()), message);
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

}  // namespace fixtop::casehost::importer
