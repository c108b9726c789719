// SPDX-License-Identifier: Apache-2.0
#include <zip.h>

#include <array>
#include <memory>

#include "readers.h"

namespace fixtop::casehost::importer {

namespace {

struct CloseZip {
    void operator()(zip_t* zip) const { zip_discard(zip); }
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};
using ZipHandle = std::unique_ptr<zip_t, CloseZip>;
using ZipFileHandle = std::unique_ptr<zip_file_t, CloseZip>;

constexpr std::string_view kLocalHeader = "PK\x03\x04";
constexpr std::string_view kEmptyArchive = "PK\x05\x06";

bool EndsWithXml(std::string_view name) {
    constexpr std::string_view kSuffix = ".xml";
    return name.size() >= kSuffix.size() &&
           EqualIgnoringCase(name.substr(name.size() - kSuffix.size()), kSuffix);
}

ZipHandle OpenArchive(std::string_view archive, Problems& problems) {
    if (archive.empty()) {
        problems.Error("the file is empty; expected a zip archive");
        return nullptr;
    }
    if (!archive.starts_with(kLocalHeader) && !archive.starts_with(kEmptyArchive)) {
        problems.Error("not a zip archive; expected a file that begins with a zip entry");
        return nullptr;
    }
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_buffer_create(archive.data(), archive.size(), 0, &error);
    ZipHandle zip(source ? zip_open_from_source(source, ZIP_RDONLY, &error) : nullptr);
    if (!zip) {
        if (source) zip_source_free(source);
        problems.Error(std::string("the zip archive is truncated or damaged (") +
                       zip_error_strerror(&error) +
                       "); expected a complete archive with its directory at the end");
    }
    zip_error_fini(&error);
    return zip;
}

std::string EntryName(zip_t* zip, zip_uint64_t index) {
    const char* name = zip_get_name(zip, index, ZIP_FL_ENC_GUESS);
    return name ? name : "";
}

// The name of the one entry, empty when the archive holds anything else.
std::string FindDocument(zip_t* zip, Problems& problems) {
    const zip_int64_t count = zip_get_num_entries(zip, 0);
    std::string first = count > 0 ? EntryName(zip, 0) : std::string();
    if (count > 1) {
        problems.Error("the archive holds " + std::to_string(count) + " entries, '" + first +
                       "' and '" + EntryName(zip, 1) +
                       "' among them; expected one .xml entry only");
        return {};
    }
    if (!EndsWithXml(first)) {
        problems.Error("the archive holds no .xml entry" +
                       (count > 0 ? ", only '" + first + "'" : std::string()) +
                       "; expected one .xml entry");
        return {};
    }
    return first;
}

// As the directory tells it; 0 when it does not.
std::size_t ToldSize(zip_t* zip) {
    zip_stat_t stat;
    zip_stat_init(&stat);
    const bool told = zip_stat_index(zip, 0, 0, &stat) == 0 && (stat.valid & ZIP_STAT_SIZE) != 0;
    return told ? static_cast<std::size_t>(stat.size) : 0;
}

bool IsEncrypted(zip_t* zip) {
    zip_stat_t stat;
    zip_stat_init(&stat);
    return zip_stat_index(zip, 0, 0, &stat) == 0 && (stat.valid & ZIP_STAT_ENCRYPTION_METHOD) &&
           stat.encryption_method != ZIP_EM_NONE;
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

}  // namespace

std::optional<std::string> InflateDocument(std::string_view archive, Problems& problems) {
    const ZipHandle zip = OpenArchive(archive, problems);
    if (!zip) return std::nullopt;
    const std::string name = FindDocument(zip.get(), problems);
    if (name.empty()) return std::nullopt;
    problems.EnterDocument(name);
    if (IsEncrypted(zip.get())) {
        problems.Error("the entry is encrypted; expected an archive without a password");
        return std::nullopt;
    }
    const ZipFileHandle file(zip_fopen_index(zip.get(), 0, 0));
    if (!file) {
        problems.Error(std::string("the entry can't be opened (") + zip_strerror(zip.get()) +
                       "); expected a stored or deflated entry");
        return std::nullopt;
    }
    // Before anything is inflated; a directory may lie, so what is inflated is counted as well.
    const std::size_t told = ToldSize(zip.get());
    if (!WithinLimits(told, archive.size(), problems)) return std::nullopt;
    std::array<char, 65536> piece;
    std::string document;
    document.reserve(told);
    while (true) {
        const zip_int64_t count = zip_fread(file.get(), piece.data(), piece.size());
        if (count < 0) {
            problems.Error(std::string("the entry is damaged (") + zip_file_strerror(file.get()) +
                           "); expected the bytes that were packed");
            return std::nullopt;
        }
        if (count == 0) return document;
        const auto added = static_cast<std::size_t>(count);
        if (!WithinLimits(document.size() + added, archive.size(), problems)) return std::nullopt;
        document.append(piece.data(), added);
    }
}

}  // namespace fixtop::casehost::importer
