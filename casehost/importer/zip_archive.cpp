// SPDX-License-Identifier: Apache-2.0
#include "zip_archive.h"

#include <algorithm>
#include <limits>

namespace fixtop::casehost::importer {

namespace {

constexpr std::string_view kEnd = "PK\x05\x06";
constexpr std::string_view kListed = "PK\x01\x02";
constexpr std::string_view kHeader = "PK\x03\x04";
constexpr std::size_t kEndSize = 22;
constexpr std::size_t kListedSize = 46;
constexpr std::size_t kHeaderSize = 30;
constexpr std::size_t kLongestComment = 65535;
constexpr unsigned kStored = 0;
constexpr unsigned kDeflated = 8;
constexpr unsigned kAes = 99;
constexpr unsigned kIsEncrypted = 1;
// Where a number of 32 bits has no room the field says so, and the number stands in this one.
constexpr std::uint64_t kElsewhere = 0xFFFFFFFF;
constexpr unsigned kLargeNumbers = 1;

constexpr char kNoArchive[] = "Not a zip archive";
constexpr char kInconsistent[] = "Zip archive inconsistent";

// Numbers one behind the other, lowest byte first; 0 beyond the end of the bytes.
class Numbers {
 public:
    explicit Numbers(std::string_view bytes) : bytes_(bytes) {}

    std::uint64_t Take(std::size_t count) {
        std::uint64_t number = 0;
        for (std::size_t i = 0; i < std::min(count, bytes_.size()); ++i) {
            number |= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes_[i])) << (8 * i);
        }
        Skip(count);
        return number;
    }
    unsigned Short() { return static_cast<unsigned>(Take(2)); }
    std::uint64_t Long() { return Take(4); }
    std::string_view Bytes(std::size_t count) {
        const std::string_view taken = bytes_.substr(0, count);
        Skip(count);
        return taken;
    }
    void Skip(std::size_t count) { bytes_.remove_prefix(std::min(count, bytes_.size())); }
    std::size_t Left() const { return bytes_.size(); }

 private:
    std::string_view bytes_;
};

// The numbers of an entry that have no room where they belong.
void TakeLargeNumbers(std::string_view extra, ZipEntry& entry) {
    Numbers fields(extra);
    while (fields.Left() >= 4) {
        const unsigned kind = fields.Short();
        const std::string_view field = fields.Bytes(fields.Short());
        if (kind != kLargeNumbers) continue;
        Numbers numbers(field);
        for (std::uint64_t* number : {&entry.size, &entry.packed_size, &entry.place}) {
            if (*number == kElsewhere && numbers.Left() >= 8) *number = numbers.Take(8);
        }
    }
}

bool IsUtf8(std::string_view text) {
    std::size_t behind = 0;  // bytes of a character that are still to come
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool goes_on = (byte & 0xC0) == 0x80;
        if (goes_on != (behind > 0)) return false;
        if (goes_on) {
            --behind;
        } else {
            if (byte >= 0xF8) return false;
            behind = byte < 0x80 ? 0 : byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
        }
    }
    return behind == 0;
}

// Older archives have names in whatever encoding their maker had.
std::string NameOf(std::string_view bytes) {
    std::string name(bytes);
    if (IsUtf8(name)) return name;
    for (char& c : name) c = static_cast<unsigned char>(c) < 0x80 ? c : '?';
    return name;
}

// One entry of the directory, which goes on behind it; false when it ends before.
bool TakeEntry(std::string_view& directory, ZipEntry& entry) {
    if (directory.size() < kListedSize || !directory.starts_with(kListed)) return false;
    Numbers numbers(directory);
    numbers.Skip(kListed.size() + 4);  // versions
    entry.encrypted = (numbers.Short() & kIsEncrypted) != 0;
    entry.method = numbers.Short();
    entry.encrypted = entry.encrypted || entry.method == kAes;
    numbers.Skip(4);  // time
    entry.checksum = static_cast<std::uint32_t>(numbers.Long());
    entry.packed_size = numbers.Long();
    entry.size = numbers.Long();
    const std::size_t name = numbers.Short();
    const std::size_t extra = numbers.Short();
    const std::size_t comment = numbers.Short();
    numbers.Skip(8);  // disk and attributes
    entry.place = numbers.Long();
    if (numbers.Left() < name + extra + comment) return false;
    entry.name = NameOf(numbers.Bytes(name));
    TakeLargeNumbers(numbers.Bytes(extra), entry);
    directory.remove_prefix(kListedSize + name + extra + comment);
    return true;
}

std::optional<std::vector<ZipEntry>> ReadEntries(std::string_view archive, std::size_t end) {
    Numbers numbers(archive.substr(end + kEnd.size()));
    const unsigned disk = numbers.Short();
    const unsigned its_disk = numbers.Short();
    const unsigned here = numbers.Short();
    const unsigned count = numbers.Short();
    const std::uint64_t size = numbers.Long();
    const std::uint64_t place = numbers.Long();
    const std::size_t comment = numbers.Short();
    if (disk != 0 || its_disk != 0 || here != count || comment > numbers.Left()) return {};
    if (place > end || size > end - place) return {};
    std::string_view directory = archive.substr(place, size);
    std::vector<ZipEntry> entries;
    for (unsigned i = 0; i < count; ++i) {
        if (!TakeEntry(directory, entries.emplace_back())) return {};
    }
    if (!directory.empty()) return {};
    return entries;
}

}  // namespace

// The last one that makes sense: a comment may hold the same bytes.
std::optional<std::vector<ZipEntry>> ReadZipDirectory(std::string_view archive,
                                                      std::string& problem) {
    problem = kNoArchive;
    if (archive.size() < kEndSize) return {};
    const std::size_t last = archive.size() - kEndSize;
    const std::size_t first = last - std::min(last, kLongestComment);
    for (std::size_t end = last;; --end) {
        end = archive.rfind(kEnd, end);
        if (end == std::string_view::npos || end < first) return {};
        if (auto entries = ReadEntries(archive, end)) return entries;
        problem = kInconsistent;
        if (end == 0) return {};
    }
}

ZipReader::ZipReader(std::string_view archive, const ZipEntry& entry)
    : checksum_told_(entry.checksum) {
    if (entry.method != kStored && entry.method != kDeflated) {
        Fail("Compression method not supported");
        return;
    }
    const std::string_view from =
        archive.substr(std::min<std::uint64_t>(entry.place, archive.size()));
    if (from.size() < kHeaderSize || !from.starts_with(kHeader)) {
        Fail(kInconsistent);
        return;
    }
    Numbers header(from.substr(kHeaderSize - 4));
    const std::size_t name = header.Short();
    const std::size_t extra = header.Short();
    header.Skip(name + extra);
    packed_ = header.Bytes(std::min<std::uint64_t>(entry.packed_size, header.Left()));
    if (entry.method == kStored) {
        consistent_ = packed_.size() == entry.packed_size && entry.packed_size == entry.size;
        return;
    }
    // No header of its own around what is deflated.
    open_ = inflateInit2(&stream_, -MAX_WBITS) == Z_OK;
    if (!open_) Fail("Malloc failure");
}

ZipReader::~ZipReader() {
    if (open_) inflateEnd(&stream_);
}

std::size_t ZipReader::Fail(const char* problem) {
    problem_ = problem;
    return 0;
}

std::size_t ZipReader::Read(char* bytes, std::size_t room) {
    if (!problem_.empty()) return 0;
    const std::size_t count = open_ ? Inflate(bytes, room) : Copy(bytes, room);
    if (!problem_.empty()) return 0;
    checksum_ = crc32(checksum_, reinterpret_cast<const Bytef*>(bytes), static_cast<uInt>(count));
    if (count > 0) return count;
    if (checksum_ != checksum_told_) return Fail("CRC error");
    if (!consistent_) return Fail(kInconsistent);
    return 0;
}

std::size_t ZipReader::Copy(char* bytes, std::size_t room) {
    const std::size_t count = packed_.copy(bytes, room);
    packed_.remove_prefix(count);
    return count;
}

std::size_t ZipReader::Inflate(char* bytes, std::size_t room) {
    constexpr std::size_t kMost = std::numeric_limits<uInt>::max();
    stream_.next_out = reinterpret_cast<Bytef*>(bytes);
    stream_.avail_out = static_cast<uInt>(std::min(room, kMost));
    const uInt before = stream_.avail_out;
    while (!at_end_ && stream_.avail_out == before) {
        const std::size_t given = std::min(packed_.size(), kMost);
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed_.data()));
        stream_.avail_in = static_cast<uInt>(given);
        const int code = inflate(&stream_, Z_NO_FLUSH);
        packed_.remove_prefix(given - stream_.avail_in);
        // What ends too early has another checksum, or lacks nothing but the mark of its end.
        at_end_ = code == Z_STREAM_END || code == Z_BUF_ERROR;
        if (at_end_ || code == Z_OK) continue;
        return Fail(code == Z_MEM_ERROR ? "Malloc failure" : "Zlib error: data error");
    }
    return before - stream_.avail_out;
}

}  // namespace fixtop::casehost::importer
