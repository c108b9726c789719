#include "platform/file_search.h"

#include <algorithm>

bool StaysInSearchFolders(std::string_view name) {
    constexpr std::string_view kSeparators = "/\\";
    if (name.empty() || name.find(':') != std::string_view::npos) return false;
    if (kSeparators.find(name.front()) != std::string_view::npos) return false;
    for (std::size_t begin = 0; begin <= name.size();) {
        const std::size_t end = std::min(name.find_first_of(kSeparators, begin), name.size());
        if (name.substr(begin, end - begin) == "..") return false;
        begin = end + 1;
    }
    return true;
}
