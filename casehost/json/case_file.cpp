// SPDX-License-Identifier: Apache-2.0
// Case files of our own on the disk.

#include "casehost/case_file.h"

#include <filesystem>
#include <fstream>
#include <new>

#include "casehost/file_path.h"
#include "casehost/text_file.h"
#include "json/case_text.h"

namespace fixtop::casehost {

namespace {

std::unique_ptr<CaseData> ReadGoodFile(const std::string& path) {
    std::error_code error;
    const auto size = std::filesystem::file_size(FilePath(path), error);
    if (error || size > kMaxCaseFileBytes) return nullptr;
    std::ifstream file(FilePath(path), std::ios::binary);
    return file ? ReadGoodCase(file) : nullptr;
}

}  // namespace

ReadResult ReadCaseFile(const std::string& path) {
    try {
        if (auto data = ReadGoodFile(path)) return {std::move(data), {}};
        std::string problem;
        const auto text = ReadTextFile(path, kMaxCaseFileBytes, problem);
        return text ? ReadAnyCase(path, *text) : ReadResult{nullptr, {{path, problem}}};
    } catch (const std::bad_alloc&) {
        return {nullptr, {{path, kNoMemory}}};
    }
}

SaveResult WriteCaseFile(const CaseData& data, const std::string& path) {
    const std::string problem =
        WriteTextFile(path, [&data](const TextTaker& take) { WriteCase(data, take); });
    return problem.empty() ? SaveResult{true, {}} : SaveResult{false, {path, problem}};
}

void RegisterCaseFiles() {
    RegisterReader(".json", ReadCaseFile);
    RegisterWriter(".json", WriteCaseFile);
}

}  // namespace fixtop::casehost
