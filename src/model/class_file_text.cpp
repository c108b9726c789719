// SPDX-License-Identifier: Apache-2.0
#include "model/class_file_text.h"

#include <algorithm>
#include <array>

namespace fixtop {

namespace {

constexpr std::array<const char*, 2> kRootClasses = {"GenericClass", "DataSet"};
constexpr std::array<const char*, 2> kOtherEndings = {".qcl", ".qzcs"};

}  // namespace

bool IsRootClass(const std::string& name) {
    return std::find(kRootClasses.begin(), kRootClasses.end(), name) != kRootClasses.end();
}

bool IsOtherLibrary(const std::string& file) {
    return std::any_of(kOtherEndings.begin(), kOtherEndings.end(),
                       [&](const char* ending) { return file.find(ending) != std::string::npos; });
}

std::vector<std::string> KeysInMetaData(const std::string& text) {
    constexpr std::size_t kWord = 3;
    std::vector<std::string> keys;
    for (std::size_t at = text.find("Key"); at != std::string::npos; at = text.find("Key", at)) {
        const bool own_part =
            (at == 0 || text[at - 1] == '~') && at + kWord < text.size() && text[at + kWord] == '~';
        at += kWord;
        if (!own_part) continue;
        const std::size_t end = std::min(text.find('~', at + 1), text.size());
        for (std::size_t begin = at + 1; begin < end;) {
            const std::size_t comma = std::min(text.find(',', begin), end);
            keys.push_back(text.substr(begin, comma - begin));
            begin = comma + 1;
        }
        at = end;
    }
    return keys;
}

}  // namespace fixtop
