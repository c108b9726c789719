// SPDX-License-Identifier: Apache-2.0
// Archives of one document, whole, unusual and damaged, beside what libzip reads of them.

#include "importer/zip_archive.h"

#include <gtest/gtest.h>
#include <zip.h>

#include <array>
#include <memory>
#include <random>

#include "case_reading.h"

namespace fixtop::casehost::test {

namespace {

using importer::ReadZipDirectory;
using importer::ZipEntry;
using importer::ZipReader;
using Document = std::optional<std::string>;

constexpr std::size_t kMost = std::size_t{1} << 20;

Document ReadHere(const std::string& archive, std::string& problem) {
    const auto entries = ReadZipDirectory(archive, problem);
    if (!entries || entries->size() != 1 || entries->front().encrypted) return std::nullopt;
    ZipReader reader(archive, entries->front());
    std::string document;
    std::array<char, 100> piece;
    while (const std::size_t count = reader.Read(piece.data(), piece.size())) {
        if (document.append(piece.data(), count).size() > kMost) return std::nullopt;
    }
    problem = reader.Problem();
    return problem.empty() ? Document(document) : std::nullopt;
}

struct Discard {
    void operator()(zip_t* zip) const { zip_discard(zip); }
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};

Document ReadByLibrary(const std::string& archive) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_buffer_create(archive.data(), archive.size(), 0, &error);
    const std::unique_ptr<zip_t, Discard> zip(zip_open_from_source(source, ZIP_RDONLY, &error));
    if (!zip) zip_source_free(source);
    if (!zip || zip_get_num_entries(zip.get(), 0) != 1) return std::nullopt;
    const std::unique_ptr<zip_file_t, Discard> file(zip_fopen_index(zip.get(), 0, 0));
    if (!file) return std::nullopt;
    std::string document;
    std::array<char, 100> piece;
    zip_int64_t count = 0;
    while ((count = zip_fread(file.get(), piece.data(), piece.size())) > 0) {
        document.append(piece.data(), static_cast<std::size_t>(count));
        if (document.size() > kMost) return std::nullopt;
    }
    return count == 0 ? Document(document) : std::nullopt;
}

std::string Rows() {
    std::string xml = "<a>";
    for (int i = 0; i < 40; ++i) xml += "<b>" + std::to_string(i * i) + "</b>\n";
    return xml + "</a>";
}

TEST(Archives, StoredAndDeflatedDocumentsAreRead) {
    for (const bool deflated : {true, false}) {
        for (const std::string& text : {Rows(), std::string(), std::string("x")}) {
            const std::string archive = ZipOf({{"case.xml", text, deflated}});
            std::string problem;
            EXPECT_EQ(ReadHere(archive, problem), Document(text)) << problem;
            EXPECT_EQ(ReadHere(archive + "behind", problem), Document(text)) << problem;
        }
    }
}

TEST(Archives, DirectoryTellsNamesSizesAndCiphers) {
    const std::string archive =
        ZipOf({{"a.xml", Rows(), true}, {"gr\xc3\xbc\xc3\x9f.xml", "<a/>", true, "secret"}});
    std::string problem;
    const auto entries = ReadZipDirectory(archive, problem);
    ASSERT_TRUE(entries.has_value()) << problem;
    ASSERT_EQ(entries->size(), 2u);
    EXPECT_EQ(entries->at(0).name, "a.xml");
    EXPECT_EQ(entries->at(0).size, Rows().size());
    EXPECT_FALSE(entries->at(0).encrypted);
    EXPECT_EQ(entries->at(1).name, "gr\xc3\xbc\xc3\x9f.xml");
    EXPECT_TRUE(entries->at(1).encrypted);
}

TEST(Archives, NamesOfAnotherEncodingAreStillTold) {
    std::string archive = ZipOf({{"ab.xml", "<a/>", true}});
    archive[archive.rfind("ab.xml")] = '\x84';
    std::string problem;
    const auto entries = ReadZipDirectory(archive, problem);
    ASSERT_TRUE(entries.has_value()) << problem;
    EXPECT_EQ(entries->at(0).name, "?b.xml");
}

// Where a number of 32 bits has no room it stands behind the name.
TEST(Archives, LargeNumbersAreFoundWhereTheyAre) {
    std::string archive = ZipOf({{"case.xml", Rows(), true}});
    const std::size_t listed = archive.find("PK\x01\x02");
    const std::size_t end = archive.rfind("PK\x05\x06");
    const auto number = [](std::uint64_t value, int bytes) {
        std::string text;
        for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i));
        return text;
    };
    const std::string extra = number(1, 2) + number(8, 2) + number(Rows().size(), 8);
    archive.insert(listed + 46 + 8, extra);
    archive.replace(listed + 24, 4, "\xff\xff\xff\xff");
    archive.replace(listed + 30, 2, number(extra.size(), 2));
    archive.replace(end + extra.size() + 12, 4, number(46 + 8 + extra.size(), 4));
    std::string problem;
    EXPECT_EQ(ReadByLibrary(archive), Document(Rows())) << "the archive is good";
    const auto entries = ReadZipDirectory(archive, problem);
    ASSERT_TRUE(entries.has_value()) << problem;
    EXPECT_EQ(entries->at(0).size, Rows().size());
    EXPECT_EQ(ReadHere(archive, problem), Document(Rows())) << problem;
}

TEST(Archives, CutOnesAreNotRead) {
    const std::string archive = ZipOf({{"case.xml", Rows(), true}});
    for (std::size_t size = 0; size < archive.size(); ++size) {
        std::string problem;
        EXPECT_EQ(ReadHere(archive.substr(0, size), problem), std::nullopt) << size;
        EXPECT_FALSE(problem.empty()) << size;
    }
}

// Archives with a few bytes changed, mostly of the directory. What is read is what was packed, and
// nearly all that the library reads is read here too: it takes a few other sizes of what is packed.
TEST(Archives, ChangedOnesAreReadAsTheLibraryReadsThem) {
    std::mt19937 random(20260102);
    int read = 0, by_library_alone = 0, here_alone = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string archive = ZipOf({{"case.xml", Rows(), round % 2 == 0}});
        for (unsigned i = 0; i <= random() % 2; ++i) {
            const std::size_t at =
                random() % 2 == 0 ? random() % archive.size() : archive.size() - 1 - random() % 80;
            if (random() % 3 == 0) {
                archive[at] = static_cast<char>(random());
            } else if (random() % 2 == 0) {
                archive[at] = static_cast<char>(archive[at] ^ (1 << (random() % 8)));
            } else if (random() % 2 == 0) {
                archive.erase(at, 1 + random() % 3);
            } else {
                archive.insert(at, 1, '\0');
            }
        }
        if (!archive.starts_with("PK\x03\x04")) continue;
        std::string problem;
        const Document here = ReadHere(archive, problem);
        const Document library = ReadByLibrary(archive);
        if (here) {
            ASSERT_EQ(*here, Rows()) << "round " << round;
        }
        read += here && library ? 1 : 0;
        by_library_alone += library && !here ? 1 : 0;
        here_alone += here && !library ? 1 : 0;
    }
    EXPECT_GT(read, 1000);
    EXPECT_LE(by_library_alone, read / 100);
    EXPECT_LE(here_alone, read / 100);
}

}  // namespace

}  // namespace fixtop::casehost::test
