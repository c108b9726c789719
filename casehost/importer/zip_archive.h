// SPDX-License-Identifier: Apache-2.0
#pragma once

// Archives in memory: what their directory tells, and the bytes of an entry.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace fixtop::casehost::importer {

namespace zip_fault {
inline constexpr char kNoArchive[] = "Not a zip archive";
inline constexpr char kInconsistent[] = "Zip archive inconsistent";
inline constexpr char kUnknownMethod[] = "Compression method not supported";
inline constexpr char kCut[] = "Premature end of file";
inline constexpr char kOtherSum[] = "CRC error";
}  // namespace zip_fault

// As the directory tells it, which may lie.
struct ZipEntry {
    std::string name;      // UTF-8
    std::size_t size = 0;  // inflated
    std::size_t packed_size = 0;
    std::uint32_t sum = 0;  // CRC-32 of what was packed
    bool is_deflated = false;
    bool is_stored = false;
    bool is_encrypted = false;
};

class ZipArchive {
 public:
    // The bytes stay the caller's and outlive the archive.
    explicit ZipArchive(std::string_view bytes);

    bool IsOpen() const { return is_empty_ || zip_ != nullptr; }
    std::size_t Count() const;
    // Null when the directory does not hold it. The entry that was asked for last is the present
    // one.
    std::optional<ZipEntry> First() const;
    std::optional<ZipEntry> Next() const;
    // What is packed of the present entry, at most what is there of it; null when the entry is not
    // where the directory says, or is another one.
    std::optional<std::string_view> Packed(const ZipEntry& entry) const;

 private:
    struct Bytes {
        std::string_view all;
        std::size_t place = 0;
    };
    struct Close {
        void operator()(void* zip) const;
    };
    struct FileCalls;

    std::optional<ZipEntry> Present() const;

    std::unique_ptr<Bytes> bytes_;
    bool is_empty_ = false;
    std::unique_ptr<void, Close> zip_;
};

// Inflates piece by piece.
class Inflater {
 public:
    explicit Inflater(std::string_view packed);
    ~Inflater();
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    // What comes next, empty at the end, valid until the next call; or what is wrong.
    std::variant<std::string_view, std::string> Next();

 private:
    struct State;
    std::unique_ptr<State> state_;
};

std::uint32_t SumOf(std::string_view bytes);

}  // namespace fixtop::casehost::importer
