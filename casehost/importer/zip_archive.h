// SPDX-License-Identifier: Apache-2.0
#pragma once

// ZipArchive: the directory of a zip archive in memory, and what is packed in it, piece by piece.
// Of the format it knows what archives of one document need: entries that are stored or deflated,
// on one disk. Numbers of the archive are never believed beyond its bytes.

#include <zlib.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fixtop::casehost::importer {

struct ZipEntry {
    std::string name;  // UTF-8; what is none is '?'
    bool encrypted = false;
    unsigned method = 0;
    std::uint32_t checksum = 0;
    std::uint64_t packed_size = 0;
    std::uint64_t size = 0;
    std::uint64_t place = 0;  // of its header
};

// The entries as the directory lists them. Null when it is damaged, and `problem` tells how.
std::optional<std::vector<ZipEntry>> ReadZipDirectory(std::string_view archive,
                                                      std::string& problem);

class ZipReader {
 public:
    // `archive` must outlive it.
    ZipReader(std::string_view archive, const ZipEntry& entry);
    ~ZipReader();
    ZipReader(const ZipReader&) = delete;
    ZipReader& operator=(const ZipReader&) = delete;

    // Why the entry can't be read; empty as long as it can.
    const std::string& Problem() const { return problem_; }
    // The next bytes of the document, at most `room`; 0 at its end, when its checksum was found to
    // be the one that the directory tells, and for a problem. The size may be another than is told.
    std::size_t Read(char* bytes, std::size_t room);

 private:
    std::size_t Fail(const char* problem);
    std::size_t Copy(char* bytes, std::size_t room);
    std::size_t Inflate(char* bytes, std::size_t room);

    uLong checksum_told_;
    bool consistent_ = true;   // what is stored is as long as the document
    std::string_view packed_;  // what is left of it
    z_stream stream_{};
    bool open_ = false;
    bool at_end_ = false;
    uLong checksum_ = 0;
    std::string problem_;
};

}  // namespace fixtop::casehost::importer
