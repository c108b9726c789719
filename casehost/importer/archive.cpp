// SPDX-License-Identifier: Apache-2.0
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

std::nullopt_t TellDamaged(const std::string& fault, Problems& problems) {
    problems.Error("the zip archive is truncated or damaged (" + fault +
                   "); expected a complete archive with its directory at the end");
    return std::nullopt;
}

std::nullopt_t TellDamagedEntry(const std::string& fault, Problems& problems) {
    problems.Error("the entry is damaged (" + fault + "); expected the bytes that were packed");
    return std::nullopt;
}

bool IsArchive(std::string_view archive, Problems& problems) {
    if (archive.empty()) {
        problems.Error("the file is empty; expected a zip archive");
        return false;
    }
    if (!archive.starts_with(kLocalHeader) && !archive.starts_with(kEmptyArchive)) {
        problems.Error("not a zip archive; expected a file that begins with a zip entry");
        return false;
    }
    return true;
}

// The one entry.
std::optional<ZipEntry> FindDocument(const ZipArchive& zip, Problems& problems) {
    const std::size_t count = zip.Count();
    std::optional<ZipEntry> first = count > 0 ? zip.First() : std::nullopt;
    if (count > 0 && !first) return TellDamaged(zip_fault::kNoArchive, problems);
    if (count > 1) {
        const std::optional<ZipEntry> second = zip.Next();
        if (!second) return TellDamaged(zip_fault::kInconsistent, problems);
        problems.Error("the archive holds " + std::to_string(count) + " entries, '" + first->name +
                       "' and '" + second->name + "' among them; expected one .xml entry only");
        return std::nullopt;
    }
    if (count == 0 || !EndsWithXml(first->name)) {
        problems.Error("the archive holds no .xml entry" +
                       (count > 0 ? ", only '" + first->name + "'" : std::string()) +
                       "; expected one .xml entry");
        return std::nullopt;
    }
    return first;
}

bool WithinLimits(std::size_t total, std::size_t archive_size, Problems& problems) {
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

std::optional<std::string_view> PackedDocument(const ZipArchive& zip, const ZipEntry& entry,
                                               Problems& problems) {
    if (entry.is_encrypted) {
        problems.Error("the entry is encrypted; expected an archive without a password");
        return std::nullopt;
    }
    const bool is_known = entry.is_deflated || entry.is_stored;
    const auto packed = is_known ? zip.Packed(entry) : std::nullopt;
    if (packed) return packed;
    problems.Error(std::string("the entry can't be opened (") +
                   (is_known ? zip_fault::kInconsistent : zip_fault::kUnknownMethod) +
                   "); expected a stored or deflated entry");
    return std::nullopt;
}

// What was stored is there as a whole, and as large as the directory tells.
std::optional<std::string> Copied(std::string_view stored, const ZipEntry& entry,
                                  Problems& problems) {
    if (stored.size() < entry.packed_size) return TellDamagedEntry(zip_fault::kCut, problems);
    if (stored.size() != entry.size) return TellDamagedEntry(zip_fault::kInconsistent, problems);
    return std::string(stored);
}

std::optional<std::string> Inflated(std::string_view packed, std::size_t told,
                                    std::size_t archive_size, Problems& problems) {
    std::string document;
    document.reserve(told);
    Inflater inflater(packed);
    while (true) {
        const auto next = inflater.Next();
        if (const auto* fault = std::get_if<std::string>(&next)) {
            return TellDamagedEntry(*fault, problems);
        }
        const auto piece = std::get<std::string_view>(next);
        if (piece.empty()) return document;
        if (!WithinLimits(document.size() + piece.size(), archive_size, problems)) {
            return std::nullopt;
        }
        document.append(piece);
    }
}

}  // namespace

std::optional<std::string> InflateDocument(std::string_view archive, Problems& problems) {
    if (!IsArchive(archive, problems)) return std::nullopt;
    const ZipArchive zip(archive);
    if (!zip.IsOpen()) return TellDamaged(zip_fault::kNoArchive, problems);
    const std::optional<ZipEntry> entry = FindDocument(zip, problems);
    if (!entry) return std::nullopt;
    problems.EnterDocument(entry->name);
    const std::optional<std::string_view> packed = PackedDocument(zip, *entry, problems);
    // Before anything is inflated; a directory may lie, so what is inflated is counted as well.
    if (!packed || !WithinLimits(entry->size, archive.size(), problems)) return std::nullopt;
    std::optional<std::string> document =
        entry->is_stored ? Copied(*packed, *entry, problems)
                         : Inflated(*packed, entry->size, archive.size(), problems);
    if (document && SumOf(*document) != entry->sum) {
        return TellDamagedEntry(zip_fault::kOtherSum, problems);
    }
    return document;
}

}  // namespace fixtop::casehost::importer
