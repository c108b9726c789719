// SPDX-License-Identifier: Apache-2.0
#include "files/draft.h"

#include <algorithm>
#include <random>
#include <string>

namespace fixtop::casehost::files {

namespace {

using Native = std::filesystem::path::string_type;
using Char = Native::value_type;

constexpr std::size_t kDigits = 12;
constexpr char kExtension[] = ".part";
constexpr std::size_t kAdded = 1 + kDigits + sizeof kExtension - 1;
// A name of this length is good for every file system; that of the target is so too.
constexpr std::size_t kSurelyShort = 100;
// Tries until a name is free. Hardly ever is the first one not.
constexpr int kMostTries = 100;

// Within a character of UTF-8, or of two UTF-16 units.
bool IsWithinCharacter(Char unit) {
    if constexpr (sizeof(Char) == 1) return (static_cast<unsigned char>(unit) & 0xC0) == 0x80;
    return (static_cast<unsigned>(unit) & 0xFC00) == 0xDC00;
}

// What names of drafts begin with.
Native Stem(const std::filesystem::path& target) {
    Native name = target.filename().native();
    std::size_t length = std::max(name.size(), kSurelyShort) - kAdded;
    if (length >= name.size()) return name;
    while (length > 0 && IsWithinCharacter(name[length])) --length;
    name.resize(length);
    return name;
}

bool IsDigit(Char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
}

bool IsDraftName(const Native& name, const Native& stem) {
    if (name.size() != stem.size() + kAdded || name.compare(0, stem.size(), stem) != 0)
        return false;
    const auto digits = name.begin() + static_cast<std::ptrdiff_t>(stem.size()) + 1;
    return digits[-1] == '.' && std::all_of(digits, digits + kDigits, IsDigit) &&
           std::equal(digits + kDigits, name.end(), kExtension);
}

}  // namespace

std::filesystem::path NameDraft(const std::filesystem::path& target) {
    std::random_device random;
    std::string added(1, '.');
    for (std::size_t i = 0; i < kDigits; ++i) added += "0123456789abcdef"[random() % 16];
    std::filesystem::path name = target.parent_path() / Stem(target);
    return name += added + kExtension;
}

std::error_code OpenDraft(NewFile& draft, const std::filesystem::path& target) {
    std::error_code error;
    for (int i = 0; i < kMostTries; ++i) {
        error = draft.Open(NameDraft(target));
        if (error != std::errc::file_exists) break;
    }
    return error;
}

void RemoveLeftDrafts(const std::filesystem::path& target) {
    const Native stem = Stem(target);
    const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (const std::filesystem::directory_iterator end; !error && entry != end;
         entry.increment(error)) {
        if (IsDraftName(entry->path().filename().native(), stem)) RemoveUnused(entry->path());
    }
}

}  // namespace fixtop::casehost::files
