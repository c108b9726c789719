// SPDX-License-Identifier: Apache-2.0
#include "framework/path/path_names.h"

#include <cstring>

#include "path/tokenizer.h"

namespace fixtop {

bool IsAnyName(const char* name) {
    return *name == '\0' || std::strcmp(name, kAnyName) == 0;
}

std::string WrittenName(const std::string& name) {
    FIValue written("");
    written.AppendText(name.c_str(), true);
    return written.ToText();
}

// A name that begins with "#" is read plainly, a key is not.
std::string WrittenKey(const std::string& key) {
    std::string written = WrittenName(key);
    return written.starts_with('#') ? '"' + written + '"' : written;
}

std::string PlainText(const FIValue& written) {
    PathTokenizer tokens;
    tokens.Assign(written);
    tokens.Tokenize();
    std::string plain;
    while (const PathToken* token = tokens.Next()) plain += token->text;
    return plain;
}

std::string JoinPath(const std::string& path, const std::string& step) {
    return path.empty() || step.empty() ? path + step : path + '.' + step;
}

}  // namespace fixtop
