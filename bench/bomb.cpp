// SPDX-License-Identifier: Apache-2.0
#include "bomb.h"

#include <unistd.h>
#include <zip.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fixtop::bench {

namespace {

constexpr std::uint64_t kBytes = 3'000'000'000;  // of blanks

bool WriteBlanks(zipFile zip) {
    const std::string blanks(1'000'000, ' ');
    for (std::uint64_t left = kBytes; left > 0; left -= blanks.size()) {
        if (zipWriteInFileInZip(zip, blanks.data(), static_cast<unsigned>(blanks.size())) !=
            ZIP_OK) {
            return false;
        }
    }
    return true;
}

bool WriteBomb(const char* file) {
    zipFile zip = zipOpen64(file, APPEND_STATUS_CREATE);
    if (!zip) return false;
    const zip_fileinfo info{};
    const bool is_written = zipOpenNewFileInZip64(zip, "bomb.xml", &info, nullptr, 0, nullptr, 0,
                                                  nullptr, Z_DEFLATED, Z_BEST_SPEED, 0) == ZIP_OK &&
                            WriteBlanks(zip) && zipCloseFileInZip(zip) == ZIP_OK;
    return zipClose(zip, nullptr) == ZIP_OK && is_written;
}

}  // namespace

std::string MakeBomb() {
    const std::filesystem::path file = std::filesystem::temp_directory_path() /
                                       ("fixtop_bomb_" + std::to_string(getpid()) + ".dwxmz");
    if (!WriteBomb(file.c_str())) throw std::runtime_error("can't make a bomb");
    return file.string();
}

void MakeBombLie(const std::string& file) {
    const struct {
        const char* header;
        std::size_t size_place;  // of four bytes in it
    } kHeaders[] = {{"PK\3\4", 22}, {"PK\1\2", 24}};
    std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    stream.clear();
    for (const auto& row : kHeaders) {
        const std::size_t header =
            row.header[2] == 3 ? bytes.find(row.header) : bytes.rfind(row.header);
        if (header == std::string::npos) throw std::runtime_error("the bomb has no such header");
        stream.seekp(static_cast<std::streamoff>(header + row.size_place));
        stream.write("\0\1\0\0", 4);
    }
    if (!stream.flush()) throw std::runtime_error("can't change the bomb");
}

}  // namespace fixtop::bench
