// SPDX-License-Identifier: Apache-2.0
#include "mapping/map_file/map_text.h"

#include <algorithm>

#include "diagnostics/module_log.h"
#include "path/tokenizer.h"

namespace fixtop {

namespace {

constexpr std::string_view kBlanks = "\n \t";

bool IsBlankCharacter(char c) {
    return kBlanks.find(c) != std::string_view::npos;
}

}  // namespace

bool IsBlank(std::string_view text) {
    return std::all_of(text.begin(), text.end(), IsBlankCharacter);
}

std::string TrimmedText(std::string_view text) {
    const std::string_view trailing = text.starts_with('\t') ? kBlanks : kBlanks.substr(0, 2);
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return std::string(text.substr(0, text.find_last_not_of(trailing) + 1));
}

std::string PackedText(std::string_view text) {
    std::string packed(text);
    std::erase_if(packed, IsBlankCharacter);
    return packed;
}

ParsedPath CompilePath(const std::string& text) {
    FIValue source;
    source.SetText(text);
    FIValue error;
    ParsedPath path = ParsePath(source, error);
    if (error.IsNull()) return path;
    LogMessage(error.ToText().c_str());
    return nullptr;
}

}  // namespace fixtop
