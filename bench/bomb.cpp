// SPDX-License-Identifier: Apache-2.0
#include "bomb.h"

#include <unistd.h>
#include <zip.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fixtop::bench {

namespace {

constexpr zip_uint64_t kBytes = 3'000'000'000;
constexpr int kFastest = 1;  // level of compression

// What is left of the document, which is all blanks.
zip_int64_t ReadBlanks(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command) {
    auto& left = *static_cast<zip_uint64_t*>(state);
    switch (command) {
        case ZIP_SOURCE_OPEN:
            left = kBytes;
            return 0;
        case ZIP_SOURCE_READ: {
            const zip_uint64_t count = std::min(left, length);
            std::memset(data, ' ', count);
            left -= count;
            return static_cast<zip_int64_t>(count);
        }
        case ZIP_SOURCE_STAT:
            zip_stat_init(static_cast<zip_stat_t*>(data));
            return sizeof(zip_stat_t);
        case ZIP_SOURCE_SUPPORTS:
            return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ,
                                                  ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                                                  ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, -1);
        default:
            return 0;
    }
}

}  // namespace

std::string MakeBomb() {
    const std::filesystem::path file = std::filesystem::temp_directory_path() /
                                       ("fixtop_bomb_" + std::to_string(getpid()) + ".dwxmz");
    zip_uint64_t left = 0;
    zip_t* zip = zip_open(file.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    zip_source_t* blanks = zip ? zip_source_function(zip, &ReadBlanks, &left) : nullptr;
    const zip_int64_t index = blanks ? zip_file_add(zip, "bomb.xml", blanks, 0) : -1;
    const bool is_made = index >= 0 &&
                         zip_set_file_compression(zip, static_cast<zip_uint64_t>(index),
                                                  ZIP_CM_DEFLATE, kFastest) == 0 &&
                         zip_close(zip) == 0;
    if (!is_made) throw std::runtime_error("can't make a bomb");
    return file.string();
}

void MakeBombLie(const std::string& file) {
    constexpr char kEntry[] = "PK\1\2";
    constexpr std::size_t kSizePlace = 24;  // of four bytes in an entry of the directory
    std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    const std::size_t entry = bytes.rfind(kEntry);
    if (entry == std::string::npos) throw std::runtime_error("the bomb has no directory");
    stream.clear();
    stream.seekp(static_cast<std::streamoff>(entry + kSizePlace));
    stream.write("\0\1\0\0", 4);
    if (!stream.flush()) throw std::runtime_error("can't change the bomb");
}

}  // namespace fixtop::bench
