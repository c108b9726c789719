// SPDX-License-Identifier: Apache-2.0
#include "saved_text.h"

#include "casehost/file_turn.h"
#include "casehost/text_file.h"
#include "fixtop/client/error.h"

namespace fixtop::client {

namespace {

constexpr std::size_t kMostBytes = std::size_t{256} << 20;

}  // namespace

std::string ReadSavedText(const std::string& file) {
    std::string problem;
    auto text = casehost::ReadTextFile(file, kMostBytes, problem);
    if (!text) throw CaseError({file + ": " + problem});
    return std::move(*text);
}

void WriteSavedText(const std::string& file, std::string_view text) {
    const std::string problem = casehost::WriteTextFile(file, text);
    if (!problem.empty()) throw CaseError({file + ": " + problem});
}

std::shared_ptr<const void> TakeTurnAt(const std::string& file) {
    return std::make_shared<casehost::FileTurn>(file);
}

}  // namespace fixtop::client
