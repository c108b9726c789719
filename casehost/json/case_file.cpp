// SPDX-License-Identifier: Apache-2.0
// Case files of our own on the disk.

#include "casehost/case_file.h"

#include "casehost/text_file.h"

namespace fixtop::casehost {

ReadResult ReadCaseFile(const std::string& path) {
    std::string problem;
    const auto text = ReadTextFile(path, kMaxCaseFileBytes, problem);
    return text ? ReadCaseText(path, *text) : ReadResult{nullptr, {{path, problem}}};
}

SaveResult WriteCaseFile(const CaseData& data, const std::string& path) {
    const std::string problem = WriteTextFile(path, CaseToText(data));
    return problem.empty() ? SaveResult{true, {}} : SaveResult{false, {path, problem}};
}

void RegisterCaseFiles() {
    RegisterReader(".json", ReadCaseFile);
    RegisterWriter(".json", WriteCaseFile);
}

}  // namespace fixtop::casehost
