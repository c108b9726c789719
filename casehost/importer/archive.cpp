// SPDX-License-Identifier: Apache-2.0
#include <array>

#include "readers.h"
#include "zip_archive.h"

namespace fixtop::casehost::importer {

namespace {

constexpr std::string_view kLocalHeader = "PK\x03\x04";
constexpr std::string_view kEmptyArchive = "PK\x05\x06";

bool EndsWithXml(std::string_view name) {
    constexpr std::string_view kSuffix = ".xml";
    return name.size() >= kSuffix.size() &&
           EqualIgnoringCase(name.substr(name.size() - kSuffix.size()), kSuffix);
}

std::optional<std::vector<ZipEntry>> OpenArchive(std::string_view archive, Problems& problems) {
    if (archive.empty()) {
        problems.Error("the file is empty; expected a zip archive");
        return std::nullopt;
    }
    if (!archive.starts_with(kLocalHeader) && !archive.starts_with(kEmptyArchive)) {
        problems.Error("not a zip archive; expected a file that begins with a zip entry");
        return std::nullopt;
    }
    std::string problem;
    auto entries = ReadZipDirectory(archive, problem);
    if (!entries) {
        problems.Error("the zip archive is truncated or damaged (" + problem +
                       "); expected a complete archive with its directory at the end");
    }
    return entries;
}

// The one entry, null when the archive holds anything else.
const ZipEntry* FindDocument(const std::vector<ZipEntry>& entries, Problems& problems) {
    if (entries.size() > 1) {
        problems.Error("the archive holds " + std::to_string(entries.size()) + " entries, '" +
                       entries[0].name + "' and '" + entries[1].name +
                       "' among them; expected one .xml entry only");
        return nullptr;
    }
    if (entries.empty() || !EndsWithXml(entries[0].name)) {
        problems.Error("the archive holds no .xml entry" +
                       (entries.empty() ? std::string() : ", only '" + entries[0].name + "'") +
                       "; expected one .xml entry");
        return nullptr;
    }
    return &entries[0];
}

bool WithinLimits(std::uint64_t total, std::size_t archive_size, Problems& problems) {
    if (total > kMaxDocumentBytes) {
        problems.Error("the document is larger than " + std::to_string(kMaxDocumentBytes >> 20) +
                       " MiB; expected a smaller flowsheet");
        return false;
    }
    if (total > kFreeInflationBytes && total / kMaxInflation > archive_size) {
        problems.Error("the document grows more than " + std::to_string(kMaxInflation) +
                       "-fold when it is inflated; expected an archive of ordinary compression");
        return false;
    }
    return true;
}

}  // namespace

std::optional<std::string> InflateDocument(std::string_view archive, Problems& problems) {
    const auto entries = OpenArchive(archive, problems);
    if (!entries) return std::nullopt;
    const ZipEntry* const entry = FindDocument(*entries, problems);
    if (!entry) return std::nullopt;
    problems.EnterDocument(entry->name);
    if (entry->encrypted) {
        problems.Error("the entry is encrypted; expected an archive without a password");
        return std::nullopt;
    }
    ZipReader reader(archive, *entry);
    if (!reader.Problem().empty()) {
        problems.Error("the entry can't be opened (" + reader.Problem() +
                       "); expected a stored or deflated entry");
        return std::nullopt;
    }
    // Before anything is inflated; a directory may lie, so what is inflated is counted as well.
    if (!WithinLimits(entry->size, archive.size(), problems)) return std::nullopt;
    std::array<char, 65536> piece;
    std::string document;
    document.reserve(static_cast<std::size_t>(entry->size));
    while (const std::size_t count = reader.Read(piece.data(), piece.size())) {
        if (!WithinLimits(document.size() + count, archive.size(), problems)) return std::nullopt;
        document.append(piece.data(), count);
    }
    if (reader.Problem().empty()) return document;
    problems.Error("the entry is damaged (" + reader.Problem() +
                   "); expected the bytes that were packed");
    return std::nullopt;
}

}  // namespace fixtop::casehost::importer
