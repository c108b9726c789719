// SPDX-License-Identifier: Apache-2.0
#include "host/variables/moniker_match.h"

#include <cctype>
#include <string_view>

namespace fixtop {

namespace {

bool BeginsWith(const char* path, std::string_view text) {
    for (char c : text) {
        if (std::tolower(static_cast<unsigned char>(*path)) !=
            std::tolower(static_cast<unsigned char>(c))) {
            return false;
        }
        ++path;
    }
    return true;
}

const char* End(const char* text) {
    return text + std::char_traits<char>::length(text);
}

// The rest behind a whole moniker; null when the path goes on with something else.
const char* RestBehind(const char* path) {
    switch (*path) {
        case '/':
        case ':':
            return path + 1;
        case '\0':
        case '#':
        case '.':
            return End(path);
        default:
            return nullptr;
    }
}

}  // namespace

std::optional<MonikerMatch> MatchMoniker(const std::string& moniker, const char* path) {
    std::string candidate = moniker;
    std::string suffix;
    if (*path == ':') ++path;
    for (;;) {
        if (candidate.starts_with(':')) candidate.erase(0, 1);
        if (BeginsWith(path, candidate)) {
            if (const char* rest = RestBehind(path + candidate.size())) {
                return MonikerMatch{suffix, rest};
            }
        }
        const std::size_t bracket = candidate.find('[');
        if (bracket != std::string::npos && bracket > 0) {
            const std::string_view before(candidate.data(), bracket);
            if (BeginsWith(path, before) && path[bracket - 1] == '.') {
                path += bracket;
                suffix += ".#";
                while (std::isdigit(static_cast<unsigned char>(*path))) suffix += *path++;
                candidate.erase(0, bracket + 2);
                continue;
            }
            if (BeginsWith(path, before.substr(0, bracket - 1)) && path[bracket - 1] == '(') {
                return MonikerMatch{suffix, path + bracket - 1};
            }
        }
        const std::size_t colon = candidate.find(':', 1);
        if (colon == std::string::npos) return std::nullopt;
        candidate[colon] = '/';
    }
}

}  // namespace fixtop
