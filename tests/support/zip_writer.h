// SPDX-License-Identifier: Apache-2.0
#pragma once

// Makes archives in memory.

#include <zip.h>
#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

namespace fixtop {

class ZipWriter {
 public:
    ZipWriter() {
        zlib_filefunc64_def calls{};
        calls.zopen64_file = [](voidpf self, const void*, int) { return self; };
        calls.zread_file = [](voidpf, voidpf, void*, uLong) { return uLong{0}; };
        calls.zwrite_file = &Write;
        calls.ztell64_file = [](voidpf, voidpf self) { return ZPOS64_T{Of(self).place_}; };
        calls.zseek64_file = &Seek;
        calls.zclose_file = [](voidpf, voidpf) { return 0; };
        calls.zerror_file = [](voidpf, voidpf) { return 0; };
        calls.opaque = this;
        zip_ = zipOpen2_64("", APPEND_STATUS_CREATE, nullptr, &calls);
    }
    ZipWriter(const ZipWriter&) = delete;
    ZipWriter& operator=(const ZipWriter&) = delete;

    // The name is UTF-8. With a password the entry is encrypted.
    bool Add(const std::string& name, std::string_view text, bool deflated,
             const std::string& password = {}) {
        constexpr uLong kNameIsUtf8 = 1U << 11;
        const auto* bytes = reinterpret_cast<const Bytef*>(text.data());
        const uLong sum = crc32_z(0, bytes, text.size());
        const zip_fileinfo info{};
        return zipOpenNewFileInZip4_64(zip_, name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr,
                                       deflated ? Z_DEFLATED : 0, Z_DEFAULT_COMPRESSION, 0,
                                       -MAX_WBITS, DEF_MEM_LEVEL, Z_DEFAULT_STRATEGY,
                                       password.empty() ? nullptr : password.c_str(), sum, 0,
                                       kNameIsUtf8, 0) == ZIP_OK &&
               zipWriteInFileInZip(zip_, text.data(), static_cast<unsigned>(text.size())) ==
                   ZIP_OK &&
               zipCloseFileInZip(zip_) == ZIP_OK;
    }
    // The archive; nothing is added any more. To be called once.
    std::string Close() {
        zipClose(zip_, nullptr);
        return bytes_;
    }

 private:
    static ZipWriter& Of(voidpf self) { return *static_cast<ZipWriter*>(self); }
    static uLong Write(voidpf, voidpf self, const void* data, uLong size) {
        ZipWriter& to = Of(self);
        to.bytes_.resize(std::max<std::size_t>(to.bytes_.size(), to.place_ + size));
        if (size > 0) std::memcpy(to.bytes_.data() + to.place_, data, size);
        to.place_ += size;
        return size;
    }
    static long Seek(voidpf, voidpf self, ZPOS64_T offset, int origin) {
        ZipWriter& to = Of(self);
        const std::size_t from = origin == ZLIB_FILEFUNC_SEEK_END   ? to.bytes_.size()
                                 : origin == ZLIB_FILEFUNC_SEEK_CUR ? to.place_
                                                                    : 0;
        to.place_ = from + offset;
        return 0;
    }

    std::string bytes_;
    std::size_t place_ = 0;
    zipFile zip_ = nullptr;
};

}  // namespace fixtop
