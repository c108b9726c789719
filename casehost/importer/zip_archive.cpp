// SPDX-License-Identifier: Apache-2.0
#include "zip_archive.h"

#include <unzip.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <new>

#include "zip_name.h"

namespace fixtop::casehost::importer {

namespace {

constexpr unsigned long kEncrypted = 1U << 0;    // of an entry's flags
constexpr unsigned long kNameIsUtf8 = 1U << 11;  // else it is in whatever the packing system had
constexpr std::size_t kPiece = 65536;
// The last thing in an archive.
constexpr std::string_view kEndRecord = "PK\x05\x06";
constexpr std::size_t kEndRecordBytes = 22;

}  // namespace

// What the library reads with; a stream is the bytes themselves.
struct ZipArchive::FileCalls {
    static Bytes& Of(voidpf stream) { return *static_cast<Bytes*>(stream); }
    static voidpf Open(voidpf bytes, const void*, int) { return bytes; }
    static int Closed(voidpf, voidpf) { return 0; }
    static uLong Read(voidpf, voidpf stream, void* target, uLong size) {
        Bytes& bytes = Of(stream);
        const std::size_t count = std::min<std::size_t>(size, bytes.all.size() - bytes.place);
        if (count > 0) std::memcpy(target, bytes.all.data() + bytes.place, count);
        bytes.place += count;
        return static_cast<uLong>(count);
    }
    static ZPOS64_T Tell(voidpf, voidpf stream) { return Of(stream).place; }
    static long Seek(voidpf, voidpf stream, ZPOS64_T offset, int origin) {
        Bytes& bytes = Of(stream);
        const std::size_t size = bytes.all.size();
        const std::size_t from = origin == ZLIB_FILEFUNC_SEEK_END   ? size
                                 : origin == ZLIB_FILEFUNC_SEEK_CUR ? bytes.place
                                                                    : 0;
        if (offset > size - from) return -1;
        bytes.place = from + offset;
        return 0;
    }
};

void ZipArchive::Close::operator()(void* zip) const {
    unzClose(zip);
}

ZipArchive::ZipArchive(std::string_view bytes) : bytes_(std::make_unique<Bytes>(Bytes{bytes})) {
    // The library takes a cut one, and refuses one without entries.
    const std::size_t end = bytes.rfind(kEndRecord);
    if (end == std::string_view::npos || bytes.size() - end < kEndRecordBytes) return;
    is_empty_ = end == 0;
    zlib_filefunc64_def calls{};
    calls.zopen64_file = &FileCalls::Open;
    calls.zread_file = &FileCalls::Read;
    calls.ztell64_file = &FileCalls::Tell;
    calls.zseek64_file = &FileCalls::Seek;
    calls.zclose_file = &FileCalls::Closed;
    calls.zerror_file = &FileCalls::Closed;
    calls.opaque = bytes_.get();
    if (!is_empty_) zip_.reset(unzOpen2_64("", &calls));
}

std::size_t ZipArchive::Count() const {
    if (is_empty_) return 0;
    unz_global_info64 info{};
    return unzGetGlobalInfo64(zip_.get(), &info) == UNZ_OK ? info.number_entry : 0;
}

std::optional<ZipEntry> ZipArchive::First() const {
    return unzGoToFirstFile(zip_.get()) == UNZ_OK ? Present() : std::nullopt;
}

std::optional<ZipEntry> ZipArchive::Next() const {
    return unzGoToNextFile(zip_.get()) == UNZ_OK ? Present() : std::nullopt;
}

std::optional<ZipEntry> ZipArchive::Present() const {
    unz_file_info64 info{};
    if (unzGetCurrentFileInfo64(zip_.get(), &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK) {
        return std::nullopt;
    }
    std::string name(info.size_filename, '\0');
    if (unzGetCurrentFileInfo64(zip_.get(), &info, name.data(), info.size_filename, nullptr, 0,
                                nullptr, 0) != UNZ_OK) {
        return std::nullopt;
    }
    ZipEntry entry;
    entry.name = (info.flag & kNameIsUtf8) != 0 ? name : ZipNameAsUtf8(name);
    entry.size = info.uncompressed_size;
    entry.packed_size = info.compressed_size;
    entry.sum = static_cast<std::uint32_t>(info.crc);
    entry.is_deflated = info.compression_method == Z_DEFLATED;
    entry.is_stored = info.compression_method == 0;
    entry.is_encrypted = (info.flag & kEncrypted) != 0;
    return entry;
}

// Opened as it is packed, only to learn where it begins.
std::optional<std::string_view> ZipArchive::Packed(const ZipEntry& entry) const {
    if (unzOpenCurrentFile2(zip_.get(), nullptr, nullptr, 1) != UNZ_OK) return std::nullopt;
    const ZPOS64_T place = unzGetCurrentFileZStreamPos64(zip_.get());
    unzCloseCurrentFile(zip_.get());
    if (place > bytes_->all.size()) return std::nullopt;
    return bytes_->all.substr(place, entry.packed_size);
}

struct Inflater::State {
    z_stream stream{};
    std::string_view packed;  // and not yet given to the stream
    bool is_at_end = false;
    std::array<char, kPiece> piece;
};

Inflater::Inflater(std::string_view packed) : state_(std::make_unique<State>()) {
    state_->packed = packed;
    // Without a head of its own. Fails for lack of memory alone.
    if (inflateInit2(&state_->stream, -MAX_WBITS) != Z_OK) throw std::bad_alloc();
}

Inflater::~Inflater() {
    inflateEnd(&state_->stream);
}

std::variant<std::string_view, std::string> Inflater::Next() {
    State& state = *state_;
    z_stream& stream = state.stream;
    if (state.is_at_end) return std::string_view();
    stream.next_out = reinterpret_cast<Bytef*>(state.piece.data());
    stream.avail_out = kPiece;
    if (stream.avail_in == 0) {
        const std::string_view given = state.packed.substr(0, std::numeric_limits<int>::max());
        state.packed.remove_prefix(given.size());
        // It is only read, which the library's older interface does not say.
        stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(given.data()));
        stream.avail_in = static_cast<uInt>(given.size());
    }
    const int told = inflate(&stream, Z_NO_FLUSH);
    const std::size_t count = kPiece - stream.avail_out;
    state.is_at_end = told == Z_STREAM_END;
    if (told == Z_MEM_ERROR) throw std::bad_alloc();
    if (told == Z_BUF_ERROR || (told == Z_OK && count == 0)) return std::string(zip_fault::kCut);
    if (told != Z_OK && told != Z_STREAM_END) return std::string("Zlib error: ") + zError(told);
    return std::string_view(state.piece.data(), count);
}

std::uint32_t SumOf(std::string_view bytes) {
    return static_cast<std::uint32_t>(
        crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

}  // namespace fixtop::casehost::importer
