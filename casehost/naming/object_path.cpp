// SPDX-License-Identifier: Apache-2.0
#include "naming/object_path.h"

namespace fixtop::casehost::path {

std::string Escape(const std::string& name) {
    std::string text;
    for (char c : name) {
        if (c == '~') {
            text += "~0";
        } else if (c == '/') {
            text += "~1";
        } else if (c == '@' && text.empty()) {
            text += "~2";
        } else {
            text += c;
        }
    }
    return text;
}

std::string Unescape(std::string_view text) {
    constexpr std::string_view kMeant = "~/@";
    std::string name;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t code =
            i + 1 < text.size() ? static_cast<std::size_t>(text[i + 1] - '0') : 9;
        if (text[i] == '~' && code < kMeant.size()) {
            name += kMeant[code];
            ++i;
        } else {
            name += text[i];
        }
    }
    return name;
}

std::string_view TakeStep(std::string_view& path) {
    const std::size_t cut = path.find('/');
    const std::string_view step = path.substr(0, cut);
    path = cut == std::string_view::npos ? std::string_view() : path.substr(cut + 1);
    return step;
}

}  // namespace fixtop::casehost::path
